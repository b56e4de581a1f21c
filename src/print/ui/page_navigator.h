// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace zelto::print {

/// First, previous, next and last page, the caption between them, and a field for a page's number.
/// Only asks for pages: what is shown is told to it.
class PageNavigator : public QWidget
{
    Q_OBJECT

public:
    explicit PageNavigator(int pageCount, QWidget* parent = nullptr);

    /// Shows the page's number in the caption; 0 before any is shown.
    void showPage(int page);

    /// Puts the text into the field as if it had been typed there.
    void typeNumber(const QString& text);

signals:
    void firstRequested();
    void previousRequested();
    void nextRequested();
    void lastRequested();
    /// The number is one of the document's.
    void pageRequested(int page);

private:
    using Request = void (PageNavigator::*)();
    QToolButton* addButton(const QString& name, const QString& iconName, const QString& hint,
                           Request request);
    void addField();
    void takeNumber();

    int m_pageCount;
    QLabel* m_caption;
    QLineEdit* m_field;
    QToolButton* m_first;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_last;
};

} // namespace zelto::print
