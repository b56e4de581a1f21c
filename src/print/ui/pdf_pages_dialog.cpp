// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/pdf_pages_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

namespace zelto::print {

PdfPagesDialog::PdfPagesDialog(int pageCount, int currentPage, QWidget* parent)
    : QDialog(parent), m_pageCount(pageCount),
      m_all(new QRadioButton(QStringLiteral("&Tutto il documento"), this)),
      m_range(new QRadioButton(QStringLiteral("&Pagine"), this))
{
    setObjectName(QStringLiteral("PaginePDF"));
    setWindowTitle(QStringLiteral("Esporta PDF"));
    m_all->setObjectName(QStringLiteral("Tutto"));
    m_range->setObjectName(QStringLiteral("Intervallo"));
    m_all->setChecked(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_all);
    layout->addWidget(m_range);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    m_first = addPage(*row, QStringLiteral("Da"), QStringLiteral("&da"), currentPage);
    m_last = addPage(*row, QStringLiteral("A"), QStringLiteral("&a"), currentPage);
    row->addStretch(1);
    layout->addLayout(buttons());
}

QHBoxLayout* PdfPagesDialog::buttons()
{
    auto* row = new QHBoxLayout;
    auto* cancel = new QPushButton(QStringLiteral("A&nnulla"), this);
    auto* accept = new QPushButton(QStringLiteral("&Esporta ..."), this);
    accept->setObjectName(QStringLiteral("Esporta"));
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
    field->setAccessibleName(QStringLiteral("Pagine, %1").arg(QString(caption).remove(u'&')));
    connect(field, &QSpinBox::valueChanged, this, [this] { m_range->setChecked(true); });
    row.addWidget(label);
    row.addWidget(field);
    return field;
}

PageRange PdfPagesDialog::pages() const
{
    if (m_all->isChecked())
        return {.first = 1, .last = m_pageCount};
    // Typed the wrong way round, they still mean the pages between.
    const auto [first, last] = std::minmax({m_first->value(), m_last->value()});
    return {.first = first, .last = last};
}

} // namespace zelto::print
