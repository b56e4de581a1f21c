// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/page_navigator.h"

#include "store/job_limits.h"
#include "text/literals.h"
#include "widgets/icons.h"

#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <algorithm>

namespace zelto::print {

PageNavigator::PageNavigator(int pageCount, QWidget* parent)
    : QWidget(parent), m_pageCount(pageCount), m_caption(new QLabel(u"Pagina 1"_s, this)),
      m_field(new QLineEdit(this))
{
    setObjectName(u"ScorriPagine"_s);
    setAccessibleName(u"Pagine del documento"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    m_first = addButton(u"Prima"_s, u"pagina_prima"_s, u"Prima pagina (Home)"_s, [] { return 1; });
    m_previous = addButton(u"Precedente"_s, u"pagina_precedente"_s, u"Pagina precedente (PagSu)"_s,
                           [this] { return m_page - 1; });
    m_caption->setObjectName(u"Pagina"_s);
    m_caption->setAlignment(Qt::AlignCenter);
    m_caption->setMinimumWidth(
        m_caption->fontMetrics().horizontalAdvance(u"Pagina %1/%1 "_s.arg(qMax(pageCount, 100))));
    layout->addWidget(m_caption);
    m_next = addButton(u"Successiva"_s, u"pagina_successiva"_s, u"Pagina successiva (PagGiù)"_s,
                       [this] { return m_page + 1; });
    m_last = addButton(u"Ultima"_s, u"pagina_ultima"_s, u"Ultima pagina (Fine)"_s,
                       [this] { return m_pageCount; });
    addField();
    showPage(0);
}

QToolButton* PageNavigator::addButton(const QString& name, const QString& iconName,
                                      const QString& hint, const std::function<int()>& target)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(widgets::icon(iconName));
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [=, this] { emit pageRequested(target()); });
    layout()->addWidget(button);
    return button;
}

void PageNavigator::addField()
{
    auto* label = new QLabel(u"&Vai a pagina"_s, this);
    label->setBuddy(m_field);
    label->setContentsMargins(12, 0, 4, 0);
    m_field->setObjectName(u"VaiAPagina"_s);
    m_field->setAccessibleName(u"Vai a pagina"_s);
    m_field->setValidator(new QIntValidator(0, store::MostPages, m_field));
    m_field->installEventFilter(this);
    m_field->setMaximumWidth(m_field->fontMetrics().horizontalAdvance(u'0') * 8);
    m_field->setEnabled(m_pageCount > 1);
    layout()->addWidget(label);
    layout()->addWidget(m_field);
    connect(m_field, &QLineEdit::returnPressed, this, &PageNavigator::takeNumber);
}

void PageNavigator::showPage(int page)
{
    m_page = page;
    // A document of one page keeps its first caption.
    if (page > 0 && m_pageCount > 1)
        m_caption->setText(u"Pagina %1/%2"_s.arg(page).arg(m_pageCount));
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
    const int page = std::clamp(m_field->text().toInt(), 1, m_pageCount);
    m_field->clear();
    emit fieldLeft();
    emit pageRequested(page);
}

/// Esc closes the window only from without the field.
bool PageNavigator::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QWidget::eventFilter(watched, event);
    m_field->clear();
    emit fieldLeft();
    return true;
}

} // namespace zelto::print
