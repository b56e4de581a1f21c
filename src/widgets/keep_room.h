// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace zelto::widgets {

/// What comes and goes leaves its room empty meanwhile, so that nothing else moves.
inline void keepRoomWhenHidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace zelto::widgets
