// SPDX-License-Identifier: GPL-3.0-or-later
// Every entry of the File menu in the whole program; tst_job_files has the rest.
#include "store/store_fixture.h"
#include "support/columns.h"
#include "support/runner.h"
#include "ui/window_fixture.h"

using namespace zelto::test;

class TestJobMenu : public QObject
{
    Q_OBJECT

private slots:
    /// The answer to the file dialog has "~" for the folder of jobs.
    void operations_data()
    {
        const auto row = columns<QString, QString, QString>("answer", "said", "open");
        row("Nuovo", u"~/nuovo"_s, u"save: Indicare codice lavoro"_s, u"~/nuovo.ZLT"_s);
        row("Apri", u"~/rotto.zlt"_s, u"\nreport: 3343"_s, {});
        row("Duplica", u"~/C"_s, u"save: Selezionare Nuovo Nome del Lavoro"_s, u"~/C.ZLT"_s);
        row("Elimina", u"~/A.ZLT"_s, u"save: Selezionare Lavoro da Eliminare"_s, {});
        row("Compattamento", u"~/rotto.zlt"_s, u"report: 3343"_s, u"~/A.ZLT"_s);
        row("Riparazione", u"~/A.ZLT"_s, u"message: Il file «~/A.ZLT» era integro"_s, u"~/A.ZLT"_s);
        row("Ripristina copia", u"~/c"_s, u"copies: ~/A.ZLT ~/B.ZLT"_s, u"~/c.ZLT"_s);
        row("2", {}, {}, u"~/B.ZLT"_s);
    }
    void operations()
    {
        QFETCH(QString, answer);
        QFETCH(QString, said);
        QFETCH(QString, open);
        const Installation installation;
        const QString folder = installation.job({}).chopped(1);
        writeBytes(installation.job(u"rotto.zlt"_s), "no database");
        Session session(installation);
        session.application().open(installation.newJob(u"B.ZLT"_s));
        session.application().open(installation.newJob(u"A.ZLT"_s));

        session.user.files = {answer.replace(u"~"_s, folder)};
        session.choose(QString::fromLatin1(QTest::currentDataTag()));
        const QString conversation = session.user.said().replace(folder, u"~"_s);
        QVERIFY2(conversation.contains(said), qPrintable(conversation));
        session.verifyIdle(open.replace(u"~"_s, folder));
        if (!open.isEmpty())
            QCOMPARE(session.entry(13).text(), u"&1 "_s + open);
    }
};

ZELTO_TEST(TestJobMenu)
#include "tst_job_menu.moc"
