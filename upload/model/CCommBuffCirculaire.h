// The receive store of the upload: the receive event appends bytes, the state
// machine reads them out. A fixed array of 100,001 bytes and two indexes; no
// fill level, no protection of unread bytes. Each access reads or writes at
// an index and then steps it, and the step tests the bound before it adds:
// an index that has just used element 100000 moves to 100001, and the next
// access there fails with "Subscript out of range" instead of wrapping. That
// order is intended; the state machine flushes the store before every
// exchange, and no reply comes near the end.
#pragma once

#include "shell/model/Checked.h"
#include "shell/model/Dynamic.h"

#include <QByteArray>

#include <array>

namespace quenby {

class CCommBuffCirculaire
{
public:
    static constexpr Int32 UpperBound = 100000;

    CCommBuffCirculaire(); // Class_Initialize: both indexes 0

    // Both indexes to 0; the contents stay.
    void flushPutIndexBuffer();
    // Appends every byte of `data`.
    void PutDataOnBuffer(const QByteArray& data);
    // Reads `count` bytes and moves the get index on. Nothing compares the
    // count with what is stored: more gives stale bytes.
    QByteArray GetDataOnBuffer(Int32 count);
    // The same read from a copy of the get index, which stays.
    QByteArray PeekDataBuffer(Int32 count);
    // Put index minus get index, as a dynamic value holding a 32-bit integer.
    Dynamic GetNumberOfNewByteInCircularBuffer() const;

    Int32 putIndex() const { return m_put; }
    Int32 getIndex() const { return m_get; }
    Int32 lastCount() const { return m_lastCount; }

private:
    // Element `index`, or the bounds failure outside 0 to UpperBound.
    unsigned char& element(Int32 index);
    // `count` bytes from `index` on, stepping it.
    QByteArray readFrom(Int32& index, Int32 count);

    std::array<unsigned char, UpperBound + 1> m_data{};
    Int32 m_put = 0;
    Int32 m_get = 0;
    Int32 m_lastCount = 0;
};

} // namespace quenby
