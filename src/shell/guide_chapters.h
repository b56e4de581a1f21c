// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <map>

class QWidget;

namespace zelto::shell {

/// The chapters of the guide that describe a screen or a part of one, by the name of its widget.
[[nodiscard]] const std::map<QString, QString>& guideChapters();

/// The chapter of the innermost such part that the widget belongs to; empty when there is none.
[[nodiscard]] QString guideChapter(const QWidget* widget);

} // namespace zelto::shell
