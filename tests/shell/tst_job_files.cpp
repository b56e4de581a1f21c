// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_desk.h"
#include "support/disk_limit.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

namespace {

const QString Filter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s;
const QString BothFilters = Filter + u"|Database Access (*.MDB)|*.mdb"_s;

const QString AskNew = u"save: Indicare codice lavoro, 12, "_s + Filter + u" in []"_s;
const QString AskOpen = u"save: Selezionare codice lavoro, 4108, "_s + Filter + u" in []"_s;
const QString AskSource = u"open: Selezionare Lavoro da Aprire, 4108, "_s + Filter + u" in []"_s;
const QString AskTarget =
    u"save: Selezionare Nuovo Nome del Lavoro, 12, "_s + Filter + u" in [%1]"_s;
const QString AskDelete = u"save: Selezionare Lavoro da Eliminare, 4108, "_s + Filter + u" in []"_s;
const QString AskCompact =
    u"open: Selezionare Database da Compattare, 4108, "_s + BothFilters + u" in [%1]"_s;
const QString AskRepair =
    u"open: Selezionare Database da Riparare, 12, "_s + BothFilters + u" in [%1]"_s;
const QString AskName = u"choose: Quale file si deve creare?Crea «…/%1»|Crea «…/%2»"_s;
const QString WindowsEdition =
    u"message: Il file «~/JET.ZLT» è un archivio dell'edizione per Windows. Per farne un lavoro di "
    "questa, aprirlo con «Apri ...» e scegliere «Converti ...»."_s;
const QString InTrash = u"message: Il file «~/%1» è stato spostato nel cestino."_s;
const QString Incompatible =
    u"message: Formato non compatibile, eseguire la conversione dell'archivio"_s;
const QString CloseWindows =
    u"message: Chiudere finestre aperte prima di selezionale un altro lavoro"_s;

QString opened(const QString& name)
{
    return u"job: ~/"_s + name + u"\nrecent"_s;
}

/// What stands between hourglass and pointer while the operation runs.
QString busy(const QString& status, const QString& within = {})
{
    return u"hourglass\nstatus: "_s + status + u" (busy)\n"_s +
           (within.isEmpty() ? within : within + u'\n') + u"status\npointer"_s;
}

} // namespace

class TestJobFiles : public QObject
{
    Q_OBJECT

private slots:
    void conversations_data();
    void conversations();
    void documentWindows_data();
    void documentWindows();
    void duplicateTakesCompanions();
    void newJobIsWhole();
    void nothingHalfMade_data();
    void nothingHalfMade();
    void filesAreReopened();
};

void TestJobFiles::conversations_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<bool>("jobOpen"); // A.ZLT
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QStringList>("said");
    QTest::addColumn<QString>("openAfter");
    const auto row = [](const char* name, const QString& operation, bool open,
                        const QStringList& answers, const QStringList& said, const QString& after) {
        QTest::newRow(name) << operation << open << answers << said << after;
    };
    const QString a = u"~/A.ZLT"_s;
    const QString none;
    const QString inFolder = u"~"_s;

    row("new", u"new"_s, false, {u"~/nuovo.zlt"_s},
        {AskNew, busy(u"Creazione nuovo lavoro ~/nuovo.ZLT"_s, opened(u"nuovo.ZLT"_s))},
        u"~/nuovo.ZLT"_s);
    row("new, dots", u"new"_s, false, {u"~/nuovo.x.y"_s},
        {AskNew, AskName.arg(u"nuovo.x.y.ZLT"_s, u"nuovo.ZLT"_s),
         busy(u"Creazione nuovo lavoro ~/nuovo.x.y.ZLT"_s, opened(u"nuovo.x.y.ZLT"_s))},
        u"~/nuovo.x.y.ZLT"_s);
    row("new, cancelled", u"new"_s, false, {}, {AskNew}, none);
    row("new, name exists", u"new"_s, false, {u"~/a"_s}, {AskNew, u"report: 3204"_s}, none);
    row("new, no folder", u"new"_s, false, {u"~/none/x"_s},
        {AskNew, busy(u"Creazione nuovo lavoro ~/none/x.ZLT"_s), u"report: 3024"_s}, none);

    row("open", u"open"_s, true, {u"~/b.zlt"_s}, {AskOpen, u"job"_s, opened(u"B.ZLT"_s)},
        u"~/B.ZLT"_s);
    row("open, cancelled", u"open"_s, true, {}, {AskOpen}, a);
    row("open, other format", u"open"_s, true, {u"~/OLD.ZLT"_s}, {AskOpen, u"job"_s, Incompatible},
        none);

    row("duplicate, name as told", u"duplicate"_s, true, {u"~/COPIA"_s},
        {AskTarget.arg(inFolder), u"job"_s,
         busy(u"Duplicazione ~/A.ZLT su ~/COPIA.ZLT"_s, opened(u"COPIA.ZLT"_s))},
        u"~/COPIA.ZLT"_s);
    row("duplicate chosen job", u"duplicate"_s, false, {u"~/b.zlt"_s, u"~/Scala.1"_s},
        {AskSource, AskTarget.arg(QString()), AskName.arg(u"Scala.1.ZLT"_s, u"SCA.ZLT"_s),
         busy(u"Duplicazione ~/B.ZLT su ~/Scala.1.ZLT"_s, opened(u"Scala.1.ZLT"_s))},
        u"~/Scala.1.ZLT"_s);
    row("duplicate, Windows edition", u"duplicate"_s, false, {u"~/JET.ZLT"_s},
        {AskSource, WindowsEdition}, none);
    row("duplicate, no source", u"duplicate"_s, false, {}, {AskSource}, none);
    row("duplicate, no target", u"duplicate"_s, true, {}, {AskTarget.arg(inFolder)}, a);
    row("duplicate, no database", u"duplicate"_s, false, {u"~/TEXT.ZLT"_s},
        {AskSource, u"report: 3343"_s}, none);
    row("duplicate, name exists", u"duplicate"_s, true, {u"~/B"_s},
        {AskTarget.arg(inFolder), u"report: 3204"_s}, a);
    row("duplicate onto itself", u"duplicate"_s, true, {u"~/A.ZLT"_s},
        {AskTarget.arg(inFolder), u"report: 3204"_s}, a);

    const QString confirm = u"confirm: Confermi cancellazione del file ''~/%1''?"_s;
    const QString askCopies = u"confirm: Copie di sicurezza del lavoro «~/%1»: 1. Contengono "
                              u"anch'esse i nomi e i dati del "
                              "condominio.\n\nCancellare anche quelle?"_s;
    row("delete other", u"delete"_s, true, {u"~/b.zlt"_s},
        {AskDelete, confirm.arg(u"B.ZLT"_s), askCopies.arg(u"B.ZLT"_s), InTrash.arg(u"B.ZLT"_s)},
        a);
    row("delete open job", u"delete"_s, true, {u"~/a.zlt"_s},
        {AskDelete, confirm.arg(u"A.ZLT"_s), askCopies.arg(u"A.ZLT"_s), u"job"_s,
         InTrash.arg(u"A.ZLT"_s)},
        none);
    row("delete, no copy possible", u"delete"_s, true, {u"~/text.zlt"_s},
        {AskDelete, confirm.arg(u"TEXT.ZLT"_s),
         u"confirm: Del file non si può conservare una copia di sicurezza.\n\nIl file «~/TEXT.ZLT» "
         "non è un database riconosciuto.\n\nEliminarlo ugualmente?"_s,
         InTrash.arg(u"TEXT.ZLT"_s)},
        a);
    row("delete, no job", u"delete"_s, true, {u"~/a.bak"_s},
        {AskDelete, u"message: Il file selezionato non è un database ZELTO"_s}, a);
    row("delete, cancelled", u"delete"_s, true, {}, {AskDelete}, a);
    row("delete, missing", u"delete"_s, true, {u"~/none.zlt"_s},
        {AskDelete, confirm.arg(u"none.zlt"_s), u"report: 3024"_s}, a);

    row("compact open job", u"compact"_s, true, {u"~/a.zlt"_s},
        {AskCompact.arg(inFolder), busy(u"Compattamento ~/A.BAK to ~/A.ZLT"_s)}, a);
    row("compact, cancelled", u"compact"_s, true, {}, {AskCompact.arg(inFolder)}, a);
    row("compact, no database", u"compact"_s, false, {u"~/TEXT.ZLT"_s},
        {AskCompact.arg(QString()), busy(u"Compattamento ~/TEXT.BAK to ~/TEXT.ZLT"_s),
         u"report: 3343"_s},
        none);
    row("compact, Windows edition", u"compact"_s, true, {u"~/JET.ZLT"_s},
        {AskCompact.arg(inFolder), WindowsEdition}, a);
    row("repair, Windows edition", u"repair"_s, true, {u"~/JET.ZLT"_s},
        {AskRepair.arg(inFolder), WindowsEdition}, a);
    row("repair open job", u"repair"_s, true, {u"~/a.zlt"_s},
        {AskRepair.arg(inFolder), u"status: Riparazione database - ~/A.ZLT"_s, u"status"_s,
         u"message: Il file «~/A.ZLT» era integro: è stato soltanto riscritto."_s},
        a);
    row("repair, beyond repair", u"repair"_s, true, {u"~/text.zlt"_s},
        {AskRepair.arg(inFolder), u"status: Riparazione database - ~/TEXT.ZLT"_s, u"status"_s,
         u"report: 3049"_s},
        a);
    row("repair, missing", u"repair"_s, false, {u"~/none.zlt"_s},
        {AskRepair.arg(QString()), u"status: Riparazione database - ~/none.zlt"_s, u"status"_s,
         u"report: 3024"_s},
        none);
    row("repair, cancelled", u"repair"_s, true, {}, {AskRepair.arg(inFolder)}, a);
}

void TestJobFiles::conversations()
{
    QFETCH(QString, operation);
    QFETCH(bool, jobOpen);
    QFETCH(QStringList, answers);
    QFETCH(QStringList, said);
    JobDesk desk;
    QVERIFY(QFile::copy(QStringLiteral(JET_FOLDER "/job-jet3.zlt"), desk.path(u"JET.ZLT"_s)));
    if (jobOpen)
        desk.open(u"A.ZLT"_s);
    desk.user.files = answers;
    const QStringList before = desk.folder.names();
    operations().at(operation)(desk.jobs);
    QCOMPARE(desk.user.said(), said.join(u'\n'));
    QTEST(desk.openJob(), "openAfter");
    QCOMPARE(desk.jobs.job().isOpen(), !desk.openJob().isEmpty());
    if (answers.isEmpty() || said.last().startsWith(u"report"))
        QCOMPARE(desk.folder.names(), before);
}

void TestJobFiles::documentWindows_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("answers");
    QTest::newRow("new") << u"new"_s << QStringList{u"~/x"_s};
    QTest::newRow("duplicate") << u"duplicate"_s << QStringList{u"~/x"_s};
    QTest::newRow("delete") << u"delete"_s << QStringList{u"~/a.zlt"_s};
    QTest::newRow("compact") << u"compact"_s << QStringList{u"~/b.zlt"_s};
    QTest::newRow("repair") << u"repair"_s << QStringList{u"~/b.zlt"_s};
}

/// They close before the job does; one that refuses stops the operation.
void TestJobFiles::documentWindows()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, answers);
    JobDesk desk;
    desk.open(u"A.ZLT"_s);
    desk.user.hasDocuments = true;
    desk.user.documentsClose = false;
    desk.user.files = answers;
    const QStringList before = desk.folder.names();
    operations().at(operation)(desk.jobs);
    QVERIFY(desk.user.said().endsWith(u"close documents"));
    QCOMPARE(desk.folder.names(), before);
    QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
    desk.jobs.ApriLavoro();
    QCOMPARE(desk.user.said(), CloseWindows);

    desk.user.documentsClose = true;
    desk.user.files = answers;
    operations().at(operation)(desk.jobs);
    QVERIFY(!desk.user.said().contains(u"report"));
    QVERIFY(!desk.user.hasDocuments);
    QVERIFY(desk.folder.names() != before || operation == u"repair"_s);
}

void TestJobFiles::duplicateTakesCompanions()
{
    JobDesk desk;
    const QString a = desk.path(u"A.ZLT"_s);
    RawFile(a).run("UPDATE ZELTO SET Utente='Rossi'");
    for (const char16_t* name : {u"a.bak", u"A.html", u"AB.TXT", u"A.ZLT-journal"})
        writeBytes(desk.path(QString::fromUtf16(name)), QString::fromUtf16(name).toUtf8());
    desk.user.files = QStringList{u"~/A.ZLT"_s, u"~/NUOVO"_s};
    desk.jobs.DuplicaLavoro();
    QCOMPARE(desk.openJob(), u"~/NUOVO.ZLT"_s);
    QCOMPARE(desk.jobs.job().JobDatabase().records(TabellaZelto).text(1), u"Rossi"_s);
    QCOMPARE(desk.folder.names().filter(u"NUOVO"_s),
             QStringList({u"NUOVO.bak"_s, u"NUOVO.html"_s, u"NUOVO.ZLT"_s}));
    QCOMPARE(bytesOf(desk.path(u"NUOVO.bak"_s)), "a.bak");
    QCOMPARE(bytesOf(desk.path(u"NUOVO.html"_s)), "A.html");
}

void TestJobFiles::newJobIsWhole()
{
    JobDesk desk;
    // What an engine left beside a file that is no more must not be taken for the new one's.
    writeBytes(desk.path(u"x.ZLT-journal"_s), QByteArray(5000, 'x'));
    desk.user.files = QStringList{u"~/x"_s};
    desk.jobs.NuovoLavoro();
    QCOMPARE(desk.jobs.job().JobDatabase().count(TabellaVani), 1);
    QCOMPARE(desk.jobs.job().JobFolder(), QFileInfo(desk.path(u"x"_s)).path());
    QCOMPARE(desk.folder.names().filter(u"x.ZLT"_s), QStringList(u"x.ZLT"_s));

    QVERIFY(QDir().mkdir(desk.path(u"v.2"_s)));
    for (const int choice : {1, 0}) {
        desk.user.choice = choice;
        desk.user.files = QStringList{u"~/v.2/lavoro"_s};
        desk.jobs.NuovoLavoro();
        QCOMPARE(desk.jobs.JobPath(), desk.path(choice == 1 ? u"v.ZLT"_s : u"v.2/lavoro.ZLT"_s));
    }
    desk.user.choice.reset();
    desk.user.files = QStringList{u"~/v.2/altro"_s};
    desk.jobs.NuovoLavoro();
    QCOMPARE(desk.jobs.JobPath(), desk.path(u"v.2/lavoro.ZLT"_s));
}

void TestJobFiles::nothingHalfMade_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("answers");
    QTest::newRow("new") << u"new"_s << QStringList{u"~/x"_s};
    QTest::newRow("duplicate") << u"duplicate"_s << QStringList{u"~/x"_s};
    QTest::newRow("compact") << u"compact"_s << QStringList{u"~/a.zlt"_s};
    QTest::newRow("repair") << u"repair"_s << QStringList{u"~/a.zlt"_s};
}

/// On a full disk, and in a folder that cannot be written.
void TestJobFiles::nothingHalfMade()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, answers);
    JobDesk desk;
    desk.open(u"A.ZLT"_s);
    const QStringList names = desk.folder.names();
    const QByteArray before = bytesOf(desk.path(u"A.ZLT"_s));
    const auto refused = [&](const char* errors) {
        desk.user.files = answers;
        operations().at(operation)(desk.jobs);
        const QString report = desk.user.said().section(u"report: "_s, 1).section(u'\n', 0, 0);
        QVERIFY2(QString::fromUtf8(errors).split(u' ').contains(report), qPrintable(report));
        QCOMPARE(desk.folder.names(), names);
        QCOMPARE(bytesOf(desk.path(u"A.ZLT"_s)), before);
        desk.jobs.chiudiLavoro();
        desk.open(u"A.ZLT"_s);
    };
    {
        const DiskLimit full(8192);
        refused("3026 3043");
    }
    {
        ::chmod(QFile::encodeName(QFileInfo(desk.path(u"x"_s)).path()).constData(), 0555);
        const PlainUser plain;
        refused("3051 3027");
    }
}

void TestJobFiles::filesAreReopened()
{
    JobDesk desk;
    desk.open(u"A.ZLT"_s);
    desk.user.files = QStringList{u"~/A.ZLT"_s};
    desk.jobs.CompattaArchivio();
    desk.jobs.job().JobDatabase().Execute(u"DELETE FROM Vani"_s);
    QCOMPARE(Database::open(desk.path(u"A.ZLT"_s)).count(TabellaVani), 0);
    QCOMPARE(Database::open(desk.path(u"A.BAK"_s)).count(TabellaVani), 1);

    // A job that is beyond repair does not stay open.
    writeBytes(desk.path(u"A.ZLT"_s), "no database any more");
    desk.user.files = QStringList{u"~/A.ZLT"_s};
    (void)desk.user.said();
    desk.jobs.RiparaArchivio();
    QVERIFY(desk.user.said().endsWith(u"report: 3049\njob\nreport: 3343"));
    QCOMPARE(desk.openJob(), QString());
    QCOMPARE(bytesOf(desk.path(u"A.ZLT"_s)), "no database any more");
}

ZELTO_TEST(TestJobFiles)
#include "tst_job_files.moc"
