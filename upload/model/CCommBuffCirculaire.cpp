#include "upload/model/CCommBuffCirculaire.h"

#include "shell/model/RuntimeError.h"

namespace quenby {

namespace {

// The bound test comes before the increment, so an index that has just used
// the last element moves one past it instead of wrapping. Intended: the next
// access there is the bounds failure of the store.
Int32 stepIndex(Int32 index)
{
    if (index > CCommBuffCirculaire::UpperBound)
        return 0;
    return index + 1;
}

} // namespace

CCommBuffCirculaire::CCommBuffCirculaire() = default;

void CCommBuffCirculaire::flushPutIndexBuffer()
{
    m_put = 0;
    m_get = 0;
}

unsigned char& CCommBuffCirculaire::element(Int32 index)
{
    if (index < 0 || index > UpperBound)
        raiseRuntimeError(err::SubscriptOutOfRange,
                          QStringLiteral("receive store index %1").arg(index));
    return m_data[static_cast<std::size_t>(index)];
}

void CCommBuffCirculaire::PutDataOnBuffer(const QByteArray& data)
{
    m_lastCount = static_cast<Int32>(data.size()) - 1; // the array's upper bound
    for (const char byte : data) {
        element(m_put) = static_cast<unsigned char>(byte);
        m_put = stepIndex(m_put);
    }
}

QByteArray CCommBuffCirculaire::readFrom(Int32& index, Int32 count)
{
    // A count of 0 or less reads nothing: the state machine reads an empty
    // store after a silent wait and goes on by the count.
    QByteArray bytes;
    if (count <= 0)
        return bytes;
    bytes.reserve(count);
    for (Int32 i = 0; i < count; ++i) {
        bytes.append(static_cast<char>(element(index)));
        index = stepIndex(index);
    }
    return bytes;
}

QByteArray CCommBuffCirculaire::GetDataOnBuffer(Int32 count)
{
    return readFrom(m_get, count);
}

QByteArray CCommBuffCirculaire::PeekDataBuffer(Int32 count)
{
    Int32 index = m_get;
    return readFrom(index, count);
}

Dynamic CCommBuffCirculaire::GetNumberOfNewByteInCircularBuffer() const
{
    // No regard to a wrap, and negative once a read passed the put index.
    return Dynamic(static_cast<int>(m_put - m_get));
}

} // namespace quenby
