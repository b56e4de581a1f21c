// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/pdf_pages_dialog.h"

#include "text/literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

namespace zelto::print {

PdfPagesDialog::PdfPagesDialog(int pageCount, int currentPage, QWidget* parent)
    : QDialog(parent), m_pageCount(pageCount),
      m_all(new QRadioButton(u"&Tutto il documento"_s, this)),
      m_range(new QRadioButton(u"&Pagine"_s, this))
{
    setObjectName(u"PaginePDF"_s);
    setWindowTitle(u"Esporta PDF"_s);
    m_all->setObjectName(u"Tutto"_s);
    m_range->setObjectName(u"Intervallo"_s);
    m_all->setChecked(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_all);
    layout->addWidget(m_range);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    m_first = addPage(*row, u"Da"_s, u"&da"_s, currentPage);
    m_last = addPage(*row, u"A"_s, u"&a"_s, currentPage);
    row->addStretch(1);
    layout->addLayout(buttons());
}

QHBoxLayout* PdfPagesDialog::buttons()
{
    auto* row = new QHBoxLayout;
    auto* cancel = new QPushButton(u"A&nnulla"_s, this);
    auto* accept = new QPushButton(u"&Esporta ..."_s, this);
    accept->setObjectName(u"Esporta"_s);
    accept->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
    row->addStretch(1);
    row->addWidget(cancel);
    row->addWidget(accept);
    return row;
}

QSpinBox* PdfPagesDialog::addPage(QHBoxLayout& row, const QString& name, const QString& caption,
                                  int page)
{
    auto* field = new QSpinBox(this);
    field->setObjectName(name);
    field->setRange(1, m_pageCount);
    field->setValue(page);
    auto* label = new QLabel(caption, this);
    label->setBuddy(field);
    field->setAccessibleName(u"Pagine, %1"_s.arg(QString(caption).remove(u'&')));
    connect(field, &QSpinBox::valueChanged, this, [this] { m_range->setChecked(true); });
    row.addWidget(label);
    row.addWidget(field);
    return field;
}

widgets::PageRange PdfPagesDialog::pages() const
{
    if (m_all->isChecked())
        return {.first = 1, .last = m_pageCount};
    // Typed the wrong way round, they still mean the pages between.
    const auto [first, last] = std::minmax({m_first->value(), m_last->value()});
    return {.first = first, .last = last};
}

} // namespace zelto::print
