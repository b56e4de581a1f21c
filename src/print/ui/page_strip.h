// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListView>

#include <functional>

namespace zelto::print {

/// The pages of a document as small pictures, each made when it is seen.
class PageStrip : public QListView
{
    Q_OBJECT

public:
    /// A page, counted from 1, as a picture.
    using Draw = std::function<QImage(int page)>;

    /// The pictures are of the size.
    PageStrip(int pageCount, QSize size, Draw draw, QWidget* parent = nullptr);

    /// Marks the page as the one shown.
    void showPage(int page);

signals:
    /// The user went to the page.
    void pageRequested(int page);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace zelto::print
