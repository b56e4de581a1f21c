// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/page_size.h"

#include <memory>

class QPrinter;

namespace zelto::print {

/// The printer that the user prefers while the program runs: the system's until another is chosen.
class PrinterDesk
{
public:
    PrinterDesk();
    ~PrinterDesk();
    PrinterDesk(const PrinterDesk&) = delete;
    PrinterDesk& operator=(const PrinterDesk&) = delete;

    /// Whether the machine has a printer at all.
    [[nodiscard]] static bool isInstalled();

    /// Paper and margins of the printer, the standard ones without a printer.
    [[nodiscard]] QPageLayout pageLayout();

    /// The printable area of that layout in twips.
    [[nodiscard]] PageSize pageSize();

    /// Only where a printer is installed.
    [[nodiscard]] QPrinter& printer();

private:
    std::unique_ptr<QPrinter> m_printer; ///< made at first use: looking for printers takes time
};

} // namespace zelto::print
