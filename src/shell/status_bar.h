// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/elided_label.h"

#include <QStatusBar>

namespace zelto::shell {

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
    ElidedLabel* addPanel(const QString& name, Qt::TextElideMode mode, int stretch);

    ElidedLabel* m_status;
    ElidedLabel* m_hint;
    ElidedLabel* m_job;
};

} // namespace zelto::shell
