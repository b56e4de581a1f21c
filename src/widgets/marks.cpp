// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/marks.h"

#include "text/literals.h"

#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace zelto::widgets {

namespace {

constexpr QColor Red(0xd0, 0x30, 0x30);

/// Lies over the field and takes no part in anything.
class RefusalFrame : public QWidget
{
public:
    explicit RefusalFrame(QWidget& field) : QWidget(&field)
    {
        setObjectName(u"Rifiuto"_s);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(field.rect());
        show();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        constexpr int Width = 2;
        QPainter painter(this);
        painter.setPen(QPen(Red, 2 * Width));
        painter.drawRect(rect());
    }
};

} // namespace

void drawMark(QPainter& painter, const QRect& cell)
{
    const int size = cell.height() / 3;
    const QPoint corner = cell.topRight() + QPoint(1, 0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Red);
    painter.drawPolygon(QPolygon({corner, corner - QPoint(size, 0), corner + QPoint(0, size)}));
    painter.restore();
}

void refuse(QWidget& field)
{
    constexpr int Shown = 400; // milliseconds
    QApplication::beep();
    if (field.findChild<QWidget*>(u"Rifiuto"_s, Qt::FindDirectChildrenOnly) != nullptr)
        return;
    auto* const frame = new RefusalFrame(field);
    QTimer::singleShot(Shown, frame, &QObject::deleteLater);
}

} // namespace zelto::widgets
