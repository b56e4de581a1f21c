// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/page_strip.h"

#include "text/literals.h"

#include <QAbstractListModel>
#include <QCache>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <utility>

namespace zelto::print {

namespace {

class Pages : public QAbstractListModel
{
public:
    Pages(int count, PageStrip::Draw draw, QObject* parent)
        : QAbstractListModel(parent), m_count(count), m_draw(std::move(draw))
    {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : m_count;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const int page = index.row() + 1;
        if (role == Qt::DisplayRole)
            return page;
        if (role == Qt::AccessibleTextRole)
            return u"Pagina %1"_s.arg(page);
        return {};
    }
    /// The page as a picture, made when it is asked for.
    [[nodiscard]] const QImage& picture(int page) const
    {
        if (m_pictures.object(page) == nullptr)
            m_pictures.insert(page, new QImage(m_draw(page)));
        return *m_pictures.object(page);
    }

private:
    static constexpr int MostPictures = 60;

    int m_count;
    PageStrip::Draw m_draw;
    mutable QCache<int, QImage> m_pictures{MostPictures};
};

/// The picture above its number. Icons would stay in a cache of the application's.
class PageDelegate : public QStyledItemDelegate
{
public:
    PageDelegate(const Pages& pages, QSize size, QObject* parent)
        : QStyledItemDelegate(parent), m_pages(pages), m_size(size)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& /*index*/) const override
    {
        return m_size + QSize(2 * Margin, 3 * Margin + option.fontMetrics.height());
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        const QPalette& colours = option.palette;
        if (chosen)
            painter->fillRect(option.rect, colours.highlight());
        const QRect page(option.rect.topLeft() + QPoint(Margin, Margin), m_size);
        painter->drawImage(page, m_pages.picture(index.row() + 1));
        painter->setPen(colours.color(QPalette::Mid));
        painter->drawRect(page);
        painter->setPen(colours.color(chosen ? QPalette::HighlightedText : QPalette::WindowText));
        painter->drawText(option.rect.adjusted(0, 0, 0, -Margin),
                          Qt::AlignHCenter | Qt::AlignBottom, index.data().toString());
    }

private:
    static constexpr int Margin = 5;

    const Pages& m_pages;
    QSize m_size;
};

} // namespace

PageStrip::PageStrip(int pageCount, QSize size, Draw draw, QWidget* parent) : QListView(parent)
{
    setObjectName(u"Miniature"_s);
    setAccessibleName(u"Miniature delle pagine"_s);
    auto* pages = new Pages(pageCount, std::move(draw), this);
    setModel(pages);
    setItemDelegate(new PageDelegate(*pages, size, this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Window);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedWidth(sizeHintForColumn(0) + verticalScrollBar()->sizeHint().width());
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { emit pageRequested(current.row() + 1); });
}

void PageStrip::showPage(int page)
{
    const QSignalBlocker quiet(this);
    setCurrentIndex(model()->index(page - 1, 0));
}

/// All keys but these are the window's.
void PageStrip::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        QListView::keyPressEvent(event);
    else
        event->ignore();
}

} // namespace zelto::print
