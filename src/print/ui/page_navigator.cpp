// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/page_navigator.h"

#include "print/ui/icons.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace zelto::print {

PageNavigator::PageNavigator(int pageCount, QWidget* parent)
    : QWidget(parent), m_pageCount(pageCount),
      m_caption(new QLabel(QStringLiteral("Pagina 1"), this)), m_field(new QLineEdit(this))
{
    setObjectName(QStringLiteral("ScorriPagine"));
    setAccessibleName(QStringLiteral("Pagine del documento"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    m_first = addButton(QStringLiteral("Prima"), QStringLiteral("pagina_prima"),
                        QStringLiteral("Prima pagina (Home)"), &PageNavigator::firstRequested);
    m_previous =
        addButton(QStringLiteral("Precedente"), QStringLiteral("pagina_precedente"),
                  QStringLiteral("Pagina precedente (PagSu)"), &PageNavigator::previousRequested);
    m_caption->setObjectName(QStringLiteral("Pagina"));
    m_caption->setAlignment(Qt::AlignCenter);
    m_caption->setMinimumWidth(m_caption->fontMetrics().horizontalAdvance(
        QStringLiteral("Pagina %1/%1 ").arg(qMax(pageCount, 100))));
    layout->addWidget(m_caption);
    m_next = addButton(QStringLiteral("Successiva"), QStringLiteral("pagina_successiva"),
                       QStringLiteral("Pagina successiva (PagGiù)"), &PageNavigator::nextRequested);
    m_last = addButton(QStringLiteral("Ultima"), QStringLiteral("pagina_ultima"),
                       QStringLiteral("Ultima pagina (Fine)"), &PageNavigator::lastRequested);
    addField();
    showPage(0);
}

QToolButton* PageNavigator::addButton(const QString& name, const QString& iconName,
                                      const QString& hint, Request request)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(icon(iconName));
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, request);
    layout()->addWidget(button);
    return button;
}

void PageNavigator::addField()
{
    auto* label = new QLabel(QStringLiteral("&Vai a pagina"), this);
    label->setBuddy(m_field);
    label->setContentsMargins(12, 0, 4, 0);
    m_field->setObjectName(QStringLiteral("VaiAPagina"));
    m_field->setAccessibleName(QStringLiteral("Vai a pagina"));
    m_field->setValidator(new QIntValidator(1, m_pageCount, m_field));
    m_field->setMaximumWidth(m_field->fontMetrics().horizontalAdvance(u'0') * 8);
    m_field->setEnabled(m_pageCount > 1);
    layout()->addWidget(label);
    layout()->addWidget(m_field);
    connect(m_field, &QLineEdit::returnPressed, this, &PageNavigator::takeNumber);
}

void PageNavigator::showPage(int page)
{
    // A document of one page keeps its first caption.
    if (page > 0 && m_pageCount > 1)
        m_caption->setText(QStringLiteral("Pagina %1/%2").arg(page).arg(m_pageCount));
    m_first->setEnabled(page > 1);
    m_previous->setEnabled(page > 1);
    m_next->setEnabled(page < m_pageCount);
    m_last->setEnabled(page < m_pageCount);
}

void PageNavigator::typeNumber(const QString& text)
{
    if (!m_field->isEnabled())
        return;
    m_field->setFocus();
    m_field->selectAll();
    m_field->insert(text);
}

void PageNavigator::takeNumber()
{
    const int page = m_field->text().toInt();
    m_field->clear();
    emit pageRequested(page);
}

} // namespace zelto::print
