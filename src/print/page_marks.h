// SPDX-License-Identifier: GPL-3.0-or-later
// What viewers of a document show beside its pages.
#pragma once

#include <QString>

#include <map>
#include <optional>

namespace zelto::print {

/// What a page is called: a word, or the number behind it.
struct PageLabel
{
    QString word = {};
    std::optional<int> number = {};

    /// As it is printed.
    [[nodiscard]] QString text() const { return number ? word + QString::number(*number) : word; }
};

/// What is known of one page.
struct PageMark
{
    QString section = {}; ///< title of the one that begins on the page; empty for none
    PageLabel label = {};
};

/// By the index of the page, 0 for the first.
using PageMarks = std::map<int, PageMark>;

} // namespace zelto::print
