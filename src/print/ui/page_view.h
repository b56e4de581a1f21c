// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/preview_layout.h"

#include <QImage>
#include <QWidget>

class QScrollBar;
class QWheelEvent;

namespace zelto::print {

/// The page as it is seen: a picture that reports where it is clicked.
class PagePicture : public QWidget
{
    Q_OBJECT

public:
    explicit PagePicture(QWidget* parent);

    void setImage(const QImage& image);

    /// The pointer says what a click will do.
    void setLens(bool enlarges) { setCursor(enlarges ? m_enlarging : m_reducing); }

    [[nodiscard]] const QImage& image() const { return m_image; }

signals:
    /// The mouse button was pressed and released on the picture, the last at the point.
    void clicked(QPointF point);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
    QCursor m_enlarging;
    QCursor m_reducing;
};

/// The picture between its scroll bars. It shows and moves what it is given; which page at which
/// size is the window's affair.
class PageView : public QWidget
{
    Q_OBJECT

public:
    explicit PageView(QWidget* parent = nullptr);

    [[nodiscard]] PagePicture& picture() { return *m_picture; }

    /// Space for the picture.
    [[nodiscard]] QSize viewSize() const { return m_area->size(); }

    /// Shows the image of the layout at the scroll position.
    void showPage(const QImage& image, const PreviewLayout& layout, const ScrollPosition& position);

    [[nodiscard]] const PreviewLayout& pageLayout() const { return m_layout; }
    [[nodiscard]] ScrollPosition scrollPosition() const;
    void setScrollPosition(const ScrollPosition& position);

    /// Moves by steps of the wheel or of a key: the scroll bars' single steps.
    void scrollBy(int stepsX, int stepsY);

signals:
    /// The space for the picture has changed.
    void resized();
    /// The wheel was turned with Ctrl held, over the place of the view; more than 0 enlarges.
    void zoomRequested(int steps, QPoint place);
    /// The wheel was turned.
    void wheelTurned(int stepsX, int stepsY);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QScrollBar* addScrollBar(const QString& name, Qt::Orientation orientation);
    void movePicture();
    void turnWheel(const QWheelEvent& event);

    QWidget* m_area;
    PagePicture* m_picture;
    QScrollBar* m_horizontal;
    QScrollBar* m_vertical;
    PreviewLayout m_layout;
    QPoint m_pendingWheel; ///< turn of the wheel not yet used, in eighths of a degree
};

} // namespace zelto::print
