#include "shell/ui/PrintPages.h"

#include "shell/ui/QtServices.h"

#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>

namespace quenby {

PrinterPages::PrinterPages(QPrinter& printer) : m_printer(&printer) {}

PrinterPages::PrinterPages(std::unique_ptr<QPrinter> printer)
    : m_owned(std::move(printer)), m_printer(m_owned.get())
{
}

PrinterPages::~PrinterPages()
{
    if (m_painter.isActive())
        m_painter.end();
}

bool PrinterPages::begin()
{
    return m_painter.begin(m_printer);
}

bool PrinterPages::newPage()
{
    return m_printer->newPage();
}

QPaintDevice& PrinterPages::device()
{
    return *m_printer;
}

QRectF PrinterPages::printableRect() const
{
    // The painter's origin stands at the top left corner of the printable
    // area.
    return {QPointF(0, 0), m_printer->pageRect(QPrinter::DevicePixel).size()};
}

void PrinterPages::end()
{
    m_painter.end();
}

std::unique_ptr<QPrinter> makePdfPrinter(const QString& fileName)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(fileName);
    printer->setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait,
                                       QMarginsF(0.25, 0.25, 0.25, 0.25), QPageLayout::Inch));
    return printer;
}

std::unique_ptr<PrintPages> openPrintPages(const PrintAnswer& answer)
{
    if (answer.cancelled)
        return {};
    if (!answer.pdfFile.isEmpty())
        return std::make_unique<PrinterPages>(makePdfPrinter(answer.pdfFile));
    if (auto* dialog = dynamic_cast<QtPrinterDialogService*>(services().printers))
        return std::make_unique<PrinterPages>(dialog->printer());
    return {};
}

} // namespace quenby
