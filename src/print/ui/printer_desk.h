// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/page_size.h"

#include <memory>
#include <optional>

class QPrinter;
class QWidget;

namespace zelto::print {

/// Pages counted from 1.
struct PageRange
{
    int first = 1;
    int last = 1;

    bool operator==(const PageRange&) const = default;
};

/// The dialogs of printing; tests answer them by script.
class PrintDialogs
{
public:
    virtual ~PrintDialogs() = default;

    /// Lets the user choose printer, paper and orientation.
    virtual void setUpPrinter(QWidget* parent, QPrinter& printer) = 0;

    /// Lets the user choose printer, copies and pages of a document; nothing when cancelled.
    virtual std::optional<PageRange> choosePages(QWidget* parent, QPrinter& printer,
                                                 int pageCount) = 0;
};

/// The printer that the user prefers while the program runs: the system's until another is chosen.
class PrinterDesk
{
public:
    /// The dialogs outlive the desk.
    explicit PrinterDesk(PrintDialogs& dialogs);
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

    // The dialogs, for the printer.
    void setUp(QWidget* parent) { m_dialogs.setUpPrinter(parent, printer()); }
    [[nodiscard]] std::optional<PageRange> choosePages(QWidget* parent, int pageCount)
    {
        return m_dialogs.choosePages(parent, printer(), pageCount);
    }

private:
    PrintDialogs& m_dialogs;
    std::unique_ptr<QPrinter> m_printer; ///< made at first use: looking for printers takes time
};

} // namespace zelto::print
