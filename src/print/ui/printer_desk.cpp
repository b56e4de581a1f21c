// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/printer_desk.h"

#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace zelto::print {

namespace {

/// A4 with the printer's margins, but none narrower than the standard ones: pages then break alike
/// on every machine whose printer reaches that far.
QPageLayout layoutFor(const QPrinter& printer)
{
    QPageLayout layout = standardPageLayout();
    const QMarginsF least = printer.pageLayout().minimumMargins();
    const QMarginsF standard = layout.margins(QPageLayout::Point);
    layout.setUnits(QPageLayout::Point);
    layout.setMargins(
        {std::max(standard.left(), least.left()), std::max(standard.top(), least.top()),
         std::max(standard.right(), least.right()), std::max(standard.bottom(), least.bottom())});
    return layout;
}

} // namespace

PrinterDesk::PrinterDesk() = default;
PrinterDesk::~PrinterDesk() = default;

bool PrinterDesk::isInstalled()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

QPageLayout PrinterDesk::pageLayout()
{
    return isInstalled() ? printer().pageLayout() : standardPageLayout();
}

PageSize PrinterDesk::pageSize()
{
    return isInstalled() ? pageSizeOf(printer()) : standardPageSize();
}

QPrinter& PrinterDesk::printer()
{
    if (!m_printer) {
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        m_printer->setResolution(TwipsPerInch);
        m_printer->setPageSize(QPageSize(QPageSize::A4));
        m_printer->setPageLayout(layoutFor(*m_printer));
    }
    return *m_printer;
}

} // namespace zelto::print
