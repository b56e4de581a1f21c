// SPDX-License-Identifier: GPL-3.0-or-later
// F1, and the window that it opens.
#include "shell/guide_chapters.h"
#include "shell/guide_window.h"
#include "support/accessible_names.h"
#include "support/print_office.h"
#include "support/runner.h"
#include "ui/window_fixture.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

using namespace zelto::shell;
using namespace zelto::test;

class TestGuide : public QObject
{
    Q_OBJECT

    /// What the guide shows after F1 in the widget; nothing when none has opened.
    static QString chapterAfterF1(QWidget* widget)
    {
        QTest::keyClick(widget, Qt::Key_F1);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* guide = qobject_cast<GuideWindow*>(window);
                guide != nullptr && guide->isVisible()) {
                QString chapter = guide->findChild<QTreeWidget*>()->currentItem()->text(0);
                guide->close();
                return chapter;
            }
        return {};
    }

private slots:
    void everyChapterExists()
    {
        QWidget parent;
        const GuideWindow guide(&parent);
        const auto& chapters = *guide.findChild<QTreeWidget*>();
        for (const auto& [name, chapter] : guideChapters())
            QVERIFY2(!chapters.findItems(chapter, Qt::MatchExactly | Qt::MatchRecursive).isEmpty(),
                     qPrintable(chapter));
    }

    void documentWindow()
    {
        Session session;
        session.open();
        QCOMPARE(chapterAfterF1(&session.window()), u"La finestra principale"_s);
        session.toolbarButton(u"Parametri"_s)->click();
        auto* tabs = session.window().findChild<QTabWidget*>(u"tbsOptions"_s);
        const auto inTab = [&](int tab) {
            tabs->setCurrentIndex(tab);
            return chapterAfterF1(tab == 1
                                      ? tabs->currentWidget()->findChild<QWidget*>(u"Dati1"_s)
                                      : tabs->currentWidget()->findChild<QAbstractItemView*>());
        };
        QCOMPARE(inTab(0), u"La scheda Elenco"_s);
        QCOMPARE(inTab(1), u"La scheda Dettaglio"_s);
        QCOMPARE(inTab(2), u"La scheda Vani"_s);
        QCOMPARE(chapterAfterF1(session.window().findChild<QTreeWidget*>(u"Navig"_s)),
                 u"Parametri"_s);
    }

    /// The guide can be used although the screen is modal.
    void modalScreen()
    {
        Session session;
        session.open();
        QString chapter;
        bool usable = false;
        const auto open = [&] { session.toolbarButton(u"DatiGenerali"_s)->click(); };
        inModal<QDialog>(open, [&](QDialog& screen) {
            QTest::keyClick(&screen, Qt::Key_F1);
            auto* guide = screen.findChild<GuideWindow*>();
            chapter = guide->findChild<QTreeWidget*>()->currentItem()->text(0);
            usable = QApplication::activeModalWidget() == &screen && guide->isVisible() &&
                     guide->parentWidget() == &screen;
        });
        QCOMPARE(chapter, u"Dati generali"_s);
        QVERIFY(usable);
    }

    void menu()
    {
        Session session;
        QMenu& menu = session.window().menuFile();
        menu.popup({});
        QCOMPARE(chapterAfterF1(&menu), u"Il menu File"_s);
        QVERIFY(!menu.isVisible());
    }

    void reading()
    {
        QWidget parent;
        GuideWindow guide(&parent);
        guide.show();
        QVERIFY(QTest::qWaitForWindowActive(&guide));
        QCOMPARE(namelessControls(guide), QStringList());
        auto* text = guide.findChild<QTextBrowser*>();
        const auto atTop = [text] { return text->cursorForPosition({1, 1}).block().text(); };
        guide.showChapter(u"Variabili"_s);
        QCOMPARE(atTop(), u"Variabili"_s);
        emit text->anchorClicked(QUrl(u"#i-coefficienti-in-pratica"_s));
        QCOMPARE(atTop(), u"I coefficienti in pratica"_s);
        guide.showChapter(u"nessun capitolo"_s);
        QCOMPARE(atTop(), u"Guida di Zelto"_s);

        QTest::keyClick(&guide, Qt::Key_F, Qt::ControlModifier);
        auto* search = guide.findChild<QLineEdit*>(u"Cerca"_s);
        QVERIFY(search->hasFocus());
        QTest::keyClicks(search, u"quadratura"_s);
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(text->textCursor().selectedText().toLower(), u"quadratura"_s);
        const int first = text->textCursor().position();
        QTest::keyClick(search, Qt::Key_Return);
        QVERIFY(text->textCursor().position() > first);
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(!guide.isVisible());
    }
};

ZELTO_TEST(TestGuide)
#include "tst_guide.moc"
