// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/ui/printer_desk.h"
#include "widgets/dialogs.h"

#include <QDialog>

class QHBoxLayout;
class QRadioButton;
class QSpinBox;

namespace zelto::print {

/// Which pages of a document go into a PDF file: all of them or a range.
class PdfPagesDialog : public QDialog
{
    Q_OBJECT

public:
    /// The range proposed is the current page alone.
    PdfPagesDialog(int pageCount, int currentPage, QWidget* parent = nullptr);

    [[nodiscard]] widgets::PageRange pages() const;

private:
    QSpinBox* addPage(QHBoxLayout& row, const QString& name, const QString& caption, int page);
    [[nodiscard]] QHBoxLayout* buttons();

    int m_pageCount;
    QRadioButton* m_all;
    QRadioButton* m_range;
    QSpinBox* m_first;
    QSpinBox* m_last;
};

} // namespace zelto::print
