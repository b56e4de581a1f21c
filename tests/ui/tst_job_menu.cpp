// SPDX-License-Identifier: GPL-3.0-or-later
// Every operation of the File menu in the whole program, done and failing; tst_job_files has the
// rest.
#include "support/runner.h"
#include "ui/window_fixture.h"

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using zelto::test::Installation;
using zelto::test::Session;

namespace {

/// "A" and "B" are jobs, A open; "~" stands for their folder.
struct Scene
{
    FileEntry entry = FileEntry::Nuovo;
    QStringList files; ///< answers to the file dialogs
    QString shown;     ///< all dialogs, of error reports the number
    QString open;      ///< the job open afterwards
    QString folder;    ///< names of the files there afterwards
};

/// Dialogs without what only the tests of the operations look at.
QString summary(QString said, const QString& folder)
{
    static const QRegularExpression file(u"(save|open): ([^,]+),[^\n]*"_s);
    return said.replace(file, u"file: \\2"_s).replace(folder, u"~/"_s);
}

} // namespace

Q_DECLARE_METATYPE(Scene)

class TestJobMenu : public QObject
{
    Q_OBJECT

private slots:
    void operations_data()
    {
        QTest::addColumn<Scene>("scene");
        const auto add = [](const char* name, const Scene& scene) {
            QTest::addRow("%s", name) << scene;
        };
        const QString both = u"A.ZLT B.ZLT"_s;
        const QString create = u"file: Indicare codice lavoro"_s;
        const QString open = u"file: Selezionare codice lavoro"_s;
        const QString copy = u"file: Selezionare Nuovo Nome del Lavoro"_s;
        const QString remove = u"file: Selezionare Lavoro da Eliminare"_s;
        const QString compact = u"file: Selezionare Database da Compattare"_s;
        const QString repair = u"file: Selezionare Database da Riparare"_s;
        const QString ask = u"\nconfirm: Confermi cancellazione del file ''~/%1''?"_s;

        QString copies =
            u"\nconfirm: Copie di sicurezza del lavoro «~/A.ZLT»: 1. Contengono anch'esse i nomi "
            "e i dati del condominio.\n\nCancellare anche quelle?"_s;
        const QString gone =
            u"\nmessage: Il file «~/%1» è stato cancellato: non c'è un cestino che lo prenda."_s;

        add("new",
            {FileEntry::Nuovo, {u"~/nuovo"_s}, create, u"nuovo.ZLT"_s, u"A.ZLT B.ZLT nuovo.ZLT"_s});
        add("new, exists",
            {FileEntry::Nuovo, {u"~/B.ZLT"_s}, create + u"\nreport: 3204"_s, u"A.ZLT"_s, both});
        add("open", {FileEntry::Apri, {u"~/B.ZLT"_s}, open, u"B.ZLT"_s, both});
        add("open, no database",
            {FileEntry::Apri, {u"~/rotto.zlt"_s}, open + u"\nreport: 3343"_s, {}, both});
        add("duplicate",
            {FileEntry::Duplica, {u"~/C"_s}, copy, u"C.ZLT"_s, u"A.ZLT B.ZLT C.ZLT"_s});
        add("delete the open job", {FileEntry::Elimina,
                                    {u"~/A.ZLT"_s},
                                    remove + ask.arg(u"A.ZLT") + copies + gone.arg(u"A.ZLT"_s),
                                    {},
                                    u"B.ZLT"_s});
        add("delete another job",
            {FileEntry::Elimina,
             {u"~/B.ZLT"_s},
             remove + ask.arg(u"B.ZLT") + copies.replace(u"A.ZLT"_s, u"B.ZLT"_s) +
                 gone.arg(u"B.ZLT"_s),
             u"A.ZLT"_s,
             u"A.ZLT"_s});
        add("compact the open job", {FileEntry::Compattamento,
                                     {u"~/A.ZLT"_s},
                                     compact,
                                     u"A.ZLT"_s,
                                     u"A.BAK A.ZLT B.ZLT"_s});
        add("compact, no database", {FileEntry::Compattamento,
                                     {u"~/rotto.zlt"_s},
                                     compact + u"\nreport: 3343"_s,
                                     u"A.ZLT"_s,
                                     both});
        add("repair the open job",
            {FileEntry::Riparazione,
             {u"~/A.ZLT"_s},
             repair + u"\nmessage: Il file «~/A.ZLT» era integro: è stato soltanto riscritto."_s,
             u"A.ZLT"_s,
             both});
        add("restore a copy",
            {FileEntry::RipristinaCopia,
             {u"~/c"_s},
             u"copies: ~/A.ZLT ~/B.ZLT\nfile: Indicare il nome del lavoro ripristinato"_s,
             u"c.ZLT"_s,
             u"A.ZLT B.ZLT c.ZLT"_s});
        add("recent", {FileEntry{14}, {}, {}, u"B.ZLT"_s, both});
    }
    void operations()
    {
        QFETCH(Scene, scene);
        const Installation installation;
        const QString folder = installation.job({});
        QFile broken(installation.job(u"rotto.zlt"_s));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no database") > 0);
        broken.close();
        Session session(installation);
        session.application().open(installation.newJob(u"B.ZLT"_s));
        session.application().open(installation.newJob(u"A.ZLT"_s));

        session.user.files = scene.files.replaceInStrings(u"~/"_s, folder);
        session.choose(scene.entry);
        QCOMPARE(summary(session.user.said(), folder), scene.shown);
        session.verifyIdle(scene.open.isEmpty() ? QString() : folder + scene.open);
        QStringList names = installation.jobs();
        QVERIFY(names.removeOne(u"rotto.zlt"_s));
        QCOMPARE(names.join(u' '), scene.folder);
        if (!scene.open.isEmpty())
            QCOMPARE(session.entry(13).text(), u"&1 "_s + folder + scene.open);
    }

    void answeringNoDeletesNothing()
    {
        const Installation installation;
        Session session(installation);
        session.user.files = {installation.newJob(u"A.ZLT"_s)};
        session.user.saysYes = false;
        session.choose(FileEntry::Elimina);
        QCOMPARE(installation.jobs(), QStringList{u"A.ZLT"_s});
    }

    void recentEntryWithoutFile()
    {
        const Installation installation;
        Session session(installation);
        const QString gone = installation.newJob(u"B.ZLT"_s);
        const QString job = installation.newJob(u"A.ZLT"_s);
        session.application().open(gone);
        session.application().open(job);
        QVERIFY(QFile::remove(gone));
        session.choose(14);
        QCOMPARE(session.user.said(), u"error: Archivio < %1 > non trovato"_s.arg(gone));
        session.verifyIdle(job);
    }

    /// A job shown by a document window is not changed for another behind its back.
    void documentWindows()
    {
        const QString refusal =
            u"message: Chiudere finestre aperte prima di selezionale un altro lavoro"_s;
        const Installation installation;
        Session session(installation);
        const QString job = installation.newJob(u"A.ZLT"_s);
        const QString other = installation.newJob(u"B.ZLT"_s);
        session.application().open(other);
        session.application().open(job);
        session.window().addDocumentWindow(new QWidget);

        session.choose(FileEntry::Apri);
        QCOMPARE(session.user.said(), refusal);
        session.choose(14);
        QCOMPARE(session.user.said(), refusal);
        session.application().open(other);
        QCOMPARE(session.user.said(), refusal);
        session.verifyIdle(job);

        session.user.files = {other};
        session.choose(FileEntry::Elimina);
        QVERIFY(session.window().HasDocumentWindows());
        session.user.files = {job};
        session.choose(FileEntry::Elimina);
        QVERIFY(!session.window().HasDocumentWindows());
        session.verifyIdle({});
    }
};

ZELTO_TEST(TestJobMenu)
#include "tst_job_menu.moc"
