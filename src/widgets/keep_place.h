// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace zelto::widgets {

/// A hidden widget keeps its place in the layout, so that nothing moves when it comes and goes.
inline void keepPlaceWhenHidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace zelto::widgets
