// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QStatusBar>

namespace zelto::shell {

/// One line of plain text that gives up its middle, or its end, where it is too long; pointing at
/// it then shows the whole.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    /// The text as it is drawn at the label's present width.
    [[nodiscard]] QString shownText() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode m_mode;
};

/// The status bar "Stato" of three panels: status line, hint on the menu entry pointed at, open
/// job.
class StatusBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr);

    /// Shows the text on the status line at once, with ", Prego attendere..." behind it when busy;
    /// an empty text shows "Pronto".
    void SetStatus(const QString& text, bool busy);

    void showHint(const QString& text) { m_hint->setText(text); }

    /// The open job's path; empty for none.
    void showJob(const QString& path);

private:
    ElidedLabel* addPanel(const QString& name, const QString& description, Qt::TextElideMode mode,
                          int stretch);

    ElidedLabel* m_status;
    ElidedLabel* m_hint;
    ElidedLabel* m_job;
};

} // namespace zelto::shell
