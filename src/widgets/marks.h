// SPDX-License-Identifier: GPL-3.0-or-later
// What a field or a cell shows of itself beside its text.
#pragma once

#include <QRect>

class QPainter;
class QWidget;

namespace zelto::widgets {

/// The red corner of a text that counts for something else than it seems.
void drawMark(QPainter& painter, const QRect& cell);

/// What was typed or pasted does not get in: a beep, and a red frame for a moment.
void refuse(QWidget& field);

} // namespace zelto::widgets
