// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace zelto::shell {

/// One line of plain text that gives up its middle, or its end, where room is short; pointing at it
/// then shows the whole.
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

} // namespace zelto::shell
