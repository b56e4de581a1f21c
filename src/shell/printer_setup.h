// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

class QPrinter;

namespace zelto::shell {

class Dialogs;
class MainWindow;

/// The printer that the user prefers while the program runs.
class PrinterSetup
{
public:
    PrinterSetup();
    ~PrinterSetup();
    PrinterSetup(const PrinterSetup&) = delete;
    PrinterSetup& operator=(const PrinterSetup&) = delete;

    /// Lets the user choose printer and paper; says so when no printer is installed.
    void run(MainWindow& window, Dialogs& dialogs);

private:
    std::unique_ptr<QPrinter> m_printer; ///< made at first use: looking for printers takes time
};

} // namespace zelto::shell
