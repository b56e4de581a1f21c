// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <functional>

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
    void pageRequested(int page);
    /// The field needs no more keys: its number has been taken, or given up by Esc.
    void fieldLeft();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QToolButton* addButton(const QString& name, const QString& iconName, const QString& hint,
                           const std::function<int()>& target);
    void addField();
    void takeNumber();

    int m_pageCount;
    int m_page = 0; ///< the one shown
    QLabel* m_caption;
    QLineEdit* m_field;
    QToolButton* m_first;
    QToolButton* m_previous;
    QToolButton* m_next;
    QToolButton* m_last;
};

} // namespace zelto::print
