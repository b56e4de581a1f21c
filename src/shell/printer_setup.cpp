// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/printer_setup.h"

#include "shell/dialogs.h"
#include "shell/main_window.h"

#include <QPrinter>
#include <QPrinterInfo>

namespace zelto::shell {

PrinterSetup::PrinterSetup() = default;
PrinterSetup::~PrinterSetup() = default;

void PrinterSetup::run(MainWindow& window, Dialogs& dialogs)
{
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        window.showMessage(QStringLiteral("Nessuna stampante installata"));
        return;
    }
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    dialogs.setUpPrinter(&window, *m_printer);
}

} // namespace zelto::shell
