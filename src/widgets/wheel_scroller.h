// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QAbstractItemView;

namespace zelto::widgets {

/// Makes an item view scroll by three rows for each notch of the wheel, whatever the desktop's own
/// setting. Lives as long as its view.
class WheelScroller : public QObject
{
    Q_OBJECT

public:
    static constexpr int RowsPerNotch = 3;

    explicit WheelScroller(QAbstractItemView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractItemView* m_view;
    int m_pending = 0; ///< turn of the wheel not yet scrolled, in eighths of a degree
};

} // namespace zelto::widgets
