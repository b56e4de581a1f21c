// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/guide_window.h"

#include "widgets/icons.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zelto::shell {

namespace {

constexpr int PositionRole = Qt::UserRole;

/// The text of the guide; its pictures are no wider than a readable line.
class GuideText : public QTextBrowser
{
protected:
    QVariant loadResource(int type, const QUrl& name) override
    {
        constexpr int LargestWidth = 620;
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        const QImage picture = QImage::fromData(resource.toByteArray());
        return picture.width() > LargestWidth
                   ? picture.scaledToWidth(LargestWidth, Qt::SmoothTransformation)
                   : picture;
    }
};

/// How links within the guide write a heading: in small letters, with hyphens for blanks.
QString anchorOf(const QString& heading)
{
    QString anchor;
    for (const QChar c : heading.toLower())
        if (c.isLetterOrNumber() || c == u'-')
            anchor += c;
        else if (c == u' ')
            anchor += u'-';
    return anchor;
}

/// Calls visit(level, text, position) for every heading, in order.
template <typename Visit>
void forHeadings(const QTextDocument& guide, Visit visit)
{
    for (QTextBlock block = guide.begin(); block.isValid(); block = block.next())
        if (const int level = block.blockFormat().headingLevel(); level > 0)
            visit(level, block.text(), block.position());
}

} // namespace

GuideWindow::GuideWindow(QWidget* parent)
    : QWidget(parent, Qt::Window), m_text(new GuideText), m_chapters(new QTreeWidget),
      m_search(new QLineEdit)
{
    setObjectName(u"Guida"_s);
    setWindowTitle(u"Guida di Zelto"_s);
    setWindowIcon(widgets::icon(u"zelto"_s));
    m_text->setObjectName(u"TestoGuida"_s);
    m_text->setAccessibleName(u"Testo della guida"_s);
    m_text->setOpenLinks(false);
    m_text->setSource(QUrl(u"qrc:/zelto/guida/guida.md"_s));
    connect(m_text, &QTextBrowser::anchorClicked, this, &GuideWindow::follow);
    m_chapters->setHeaderHidden(true);
    m_chapters->setAccessibleName(u"Capitoli"_s);
    listChapters();
    connect(m_chapters, &QTreeWidget::currentItemChanged, this,
            [this](const QTreeWidgetItem* chapter) {
                if (chapter != nullptr)
                    goTo(chapter->data(0, PositionRole).toInt());
            });
    auto* splitter = new QSplitter;
    splitter->addWidget(m_chapters);
    splitter->addWidget(m_text);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({260, 700});
    new QVBoxLayout(this);
    buildSearch();
    layout()->addWidget(splitter);
    constexpr QSize FirstSize(980, 720);
    resize(FirstSize);
}

void GuideWindow::buildSearch()
{
    auto* label = new QLabel(u"&Cerca:"_s);
    label->setBuddy(m_search);
    m_search->setObjectName(u"Cerca"_s);
    m_search->setClearButtonEnabled(true);
    m_search->setPlaceholderText(u"parole da trovare, poi Invio"_s);
    connect(m_search, &QLineEdit::returnPressed, this, &GuideWindow::search);
    new QShortcut(QKeySequence::Find, this, m_search, qOverload<>(&QWidget::setFocus));
    new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_search, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void GuideWindow::listChapters()
{
    QTreeWidgetItem* parent = nullptr;
    forHeadings(*m_text->document(), [&](int level, const QString& text, int position) {
        constexpr int SectionLevel = 3;
        auto* chapter = level >= SectionLevel && parent != nullptr
                            ? new QTreeWidgetItem(parent, {text})
                            : new QTreeWidgetItem(m_chapters, {text});
        chapter->setData(0, PositionRole, position);
        if (level < SectionLevel)
            parent = chapter;
    });
    m_chapters->expandAll();
}

void GuideWindow::showChapter(const QString& heading)
{
    const QList<QTreeWidgetItem*> found =
        m_chapters->findItems(heading, Qt::MatchExactly | Qt::MatchRecursive);
    m_chapters->setCurrentItem(found.isEmpty() ? m_chapters->topLevelItem(0) : found.constFirst());
    goTo(m_chapters->currentItem()->data(0, PositionRole).toInt());
    m_text->setFocus();
}

void GuideWindow::goTo(int position)
{
    QTextCursor cursor(m_text->document());
    cursor.movePosition(QTextCursor::End);
    m_text->setTextCursor(cursor);
    cursor.setPosition(position);
    m_text->setTextCursor(cursor);
    const int top = m_text->cursorRect(cursor).top();
    m_text->verticalScrollBar()->setValue(m_text->verticalScrollBar()->value() + top);
}

void GuideWindow::follow(const QUrl& link)
{
    if (!link.hasFragment() || !(link.scheme().isEmpty() || link.scheme() == u"qrc")) {
        QDesktopServices::openUrl(link);
        return;
    }
    forHeadings(*m_text->document(), [&](int, const QString& heading, int) {
        if (anchorOf(heading) == link.fragment(QUrl::FullyDecoded))
            showChapter(heading);
    });
}

void GuideWindow::search()
{
    if (m_text->find(m_search->text()))
        return;
    m_text->moveCursor(QTextCursor::Start);
    if (!m_text->find(m_search->text()))
        QApplication::beep();
}

/// Some window managers leave the keyboard to nobody.
void GuideWindow::closeEvent(QCloseEvent* event)
{
    event->accept();
    parentWidget()->activateWindow();
}

} // namespace zelto::shell
