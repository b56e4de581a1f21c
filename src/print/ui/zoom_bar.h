// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <map>

class QLabel;
class QToolButton;

namespace zelto::print {

/// The sizes in which a page can be shown, and the one that it is shown in.
class ZoomBar : public QWidget
{
    Q_OBJECT

public:
    explicit ZoomBar(QWidget* parent = nullptr);

    /// Shows the scale, 1 for the size on paper, and whether the page is fitted to the window.
    void showScale(double scale, bool fitted);

signals:
    void fitRequested();
    void scaleRequested(double scale);

private:
    QToolButton* addButton(const QString& name, const QString& caption, const QString& hint);

    QLabel* m_scale;
    QToolButton* m_fit;
    std::map<int, QToolButton*> m_buttons; ///< by their percentage
};

} // namespace zelto::print
