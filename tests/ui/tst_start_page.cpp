// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/start_page.h"
#include "support/accessible_names.h"
#include "support/runner.h"
#include "window_fixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

using namespace zelto;
using namespace zelto::shell;
using namespace zelto::test;

class TestStartPage : public QObject
{
    Q_OBJECT

    /// The page of a session in whose folder there are A.ZLT, which was opened and closed again,
    /// and B.ZLT.
    struct Desk
    {
        Desk()
        {
            for (const char16_t* name : {u"A.ZLT", u"B.ZLT"})
                (void)installation.newJob(QString::fromUtf16(name));
            writeBytes(installation.job(u"ROTTO.ZLT"_s), "no database");
            session.emplace(installation);
            session->application().open(installation.job(u"A.ZLT"_s));
            wait();
        }
        void wait()
        {
            QVERIFY(QTest::qWaitFor([this] { return !page().isReading(); }));
        }
        [[nodiscard]] StartPage& page() { return *session->window().findChild<StartPage*>(); }
        [[nodiscard]] QTreeView& list() { return *page().findChild<QTreeView*>(); }
        [[nodiscard]] QLineEdit& search() { return *page().findChild<QLineEdit*>(); }
        [[nodiscard]] QString openJob() const
        {
            return store::nameOf(session->application().jobFiles().JobPath());
        }

        Installation installation;
        mutable std::optional<Session> session;
    };

private slots:
    /// Shown while there is no document window, and none itself.
    void comesAndGoes()
    {
        Desk desk;
        QVERIFY(desk.page().isVisible());
        QVERIFY(!desk.session->window().HasDocumentWindows());
        desk.session->toolbarButton(u"Parametri"_s)->click();
        QVERIFY(!desk.page().isVisible());
        QVERIFY(!desk.page().isReading());
        QVERIFY(desk.session->window().closeDocumentWindows());
        QTRY_VERIFY(desk.page().isVisible());
        desk.wait();
        QCOMPARE(desk.list().model()->rowCount(), 3);
    }

    void enterOpensWhatWasSearched()
    {
        Desk desk;
        QTest::keyClicks(&desk.search(), u"b"_s);
        QCOMPARE(desk.list().model()->rowCount(), 1);
        QTest::keyClick(&desk.search(), Qt::Key_Return);
        QTest::keyClick(&desk.list(), Qt::Key_Return);
        QCOMPARE(desk.openJob(), u"B.ZLT"_s);
        QVERIFY(!desk.page().isVisible());
    }

    /// A button for what helps is there with the job that it helps, and the list stays as it was.
    void damagedJob()
    {
        Desk desk;
        auto* repair = desk.page().findChild<QPushButton*>(u"RiparaLavoro"_s);
        desk.list().setCurrentIndex(desk.list().model()->index(0, 0));
        QVERIFY(!repair->isVisible());
        desk.list().setCurrentIndex(desk.list().model()->index(2, 0));
        QVERIFY(repair->isVisible());
        repair->click();
        QCOMPARE(desk.session->user.said(), u"report: 3049"_s); // nothing can be read of it
        QCOMPARE(desk.openJob(), u"A.ZLT"_s);
        desk.wait();
        QCOMPARE(desk.list().currentIndex().row(), 2);
    }

    void isNamedAndFits()
    {
        Desk desk;
        QCOMPARE(namelessControls(desk.page()), QStringList());
        // 1366 x 768 at 125 %, less what the window has around the page.
        const QSize least = desk.session->window().minimumSizeHint();
        QVERIFY2(least.width() <= 1092 && least.height() <= 580,
                 qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
    }
};

ZELTO_TEST(TestStartPage)
#include "tst_start_page.moc"
