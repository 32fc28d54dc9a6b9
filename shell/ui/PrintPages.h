// The pages of one print job, as window code paints them: begin the job,
// paint the first page through the painter, start each further page with
// newPage, end the job. The printer dialog's answer says where the pages go.
#pragma once

#include "shell/model/Services.h"

#include <QPainter>
#include <QRectF>

#include <memory>

class QPrinter;

namespace quenby {

class PrintPages
{
public:
    virtual ~PrintPages() = default;
    // Starts the job on its first page; false when the printer cannot start.
    virtual bool begin() = 0;
    // Ends the page in hand and starts the next one.
    virtual bool newPage() = 0;
    // The painter of the job, between begin and end.
    virtual QPainter& painter() = 0;
    virtual QPaintDevice& device() = 0;
    // The area of a page the printer can reach, in the painter's coordinates.
    virtual QRectF printableRect() const = 0;
    // Ends the job and sends it.
    virtual void end() = 0;
};

// The pages of a job on a QPrinter: a borrowed one, such as the printer of
// the printer dialog, or one of its own.
class PrinterPages final : public PrintPages
{
public:
    explicit PrinterPages(QPrinter& printer);
    explicit PrinterPages(std::unique_ptr<QPrinter> printer);
    ~PrinterPages() override;
    PrinterPages(const PrinterPages&) = delete;
    PrinterPages& operator=(const PrinterPages&) = delete;

    bool begin() override;
    bool newPage() override;
    QPainter& painter() override { return m_painter; }
    QPaintDevice& device() override;
    QRectF printableRect() const override;
    void end() override;

private:
    std::unique_ptr<QPrinter> m_owned;
    QPrinter* m_printer;
    QPainter m_painter;
};

// A printer that writes a PDF file: letter paper, a quarter inch margin all
// round, at the printer's high resolution.
std::unique_ptr<QPrinter> makePdfPrinter(const QString& fileName);

// The pages of the job the printer dialog's answer starts: the PDF file it
// names, else the printer chosen in the Qt printer dialog. None when the
// dialog was cancelled or no printer is at hand.
std::unique_ptr<PrintPages> openPrintPages(const PrintAnswer& answer);

} // namespace quenby
