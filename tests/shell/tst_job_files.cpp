// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_desk.h"
#include "support/columns.h"
#include "support/disk_limit.h"
#include "support/plain_user.h"
#include "support/runner.h"

using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

namespace {

const QString WindowsEdition =
    u"message: Il file «~/JET.ZLT» è un archivio dell'edizione per Windows. Per farne un lavoro di "
    "questa, aprirlo con «Apri ...» e scegliere «Converti ...»."_s;
const QString CloseWindows =
    u"message: Chiudere finestre aperte prima di selezionale un altro lavoro"_s;

struct Question
{
    Operation operation;
    const char* line; ///< "%1" for the filter
    bool inJobFolder;
};

/// What each operation asks first.
const std::vector<Question> Questions{
    {&JobFiles::NuovoLavoro, "save: Indicare codice lavoro, 12, %1", true},
    {&JobFiles::ApriLavoro, "save: Selezionare codice lavoro, 4108, %1", false},
    {&JobFiles::DuplicaLavoro, "save: Selezionare Nuovo Nome del Lavoro, 12, %1", true},
    {&JobFiles::EliminaLavoro, "save: Selezionare Lavoro da Eliminare, 4108, %1", false},
    {&JobFiles::CompattaArchivio, "open: Selezionare Database da Compattare, 4108, %1%2", true},
    {&JobFiles::RiparaArchivio, "open: Selezionare Database da Riparare, 12, %1%2", true},
};

QString question(Operation operation, bool jobOpen)
{
    const Question& question = *std::ranges::find(Questions, operation, &Question::operation);
    return QString::fromUtf8(question.line)
               .replace(u"%1"_s, u"Tabelle Millessimi (*.ZLT)|*.zlt"_s)
               .replace(u"%2"_s, u"|Database Access (*.MDB)|*.mdb"_s) +
           (question.inJobFolder && jobOpen ? u" in [~]"_s : u" in []"_s);
}

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

/// What writes files, with the answers to its file dialogs; gives what adds another row.
auto writing()
{
    const auto row = columns<Operation, QString>("operation", "answer");
    row("new", &JobFiles::NuovoLavoro, u"~/x"_s);
    row("duplicate", &JobFiles::DuplicaLavoro, u"~/x"_s);
    row("compact", &JobFiles::CompattaArchivio, u"~/a.zlt"_s);
    row("repair", &JobFiles::RiparaArchivio, u"~/a.zlt"_s);
    return row;
}

const QString A = u"A.ZLT"_s;
const QString RepairStatus = u"status: Riparazione database - ~/"_s;
const QString Confirm = u"confirm: Confermi cancellazione del file ''~/%1''?"_s;
const QString AskCopies =
    u"confirm: Copie di sicurezza del lavoro «~/%1»: 1. Contengono anch'esse i nomi e i dati del "
    u"condominio.\n\nCancellare anche quelle?"_s;
const QString InTrash = u"message: Il file «~/%1» è stato spostato nel cestino."_s;

} // namespace

class TestJobFiles : public QObject
{
    Q_OBJECT

private slots:
    /// With A.ZLT open or not; what is said after the question.
    void conversations_data()
    {
        const auto row = columns<Operation, bool, QString, QStringList>("operation", "jobOpen",
                                                                        "answer", "said");
        row("new", &JobFiles::NuovoLavoro, false, u"nuovo.zlt"_s,
            {busy(u"Creazione nuovo lavoro ~/nuovo.ZLT"_s, opened(u"nuovo.ZLT"_s))});
        row("new, dots", &JobFiles::NuovoLavoro, false, u"nuovo.x.y"_s,
            {u"choose: Quale file si deve creare?Crea «…/nuovo.x.y.ZLT»|Crea «…/nuovo.ZLT»"_s,
             busy(u"Creazione nuovo lavoro ~/nuovo.x.y.ZLT"_s, opened(u"nuovo.x.y.ZLT"_s))});
        row("new, name exists", &JobFiles::NuovoLavoro, false, u"a"_s, {u"report: 3204"_s});
        row("new, no folder", &JobFiles::NuovoLavoro, false, u"none/x"_s,
            {busy(u"Creazione nuovo lavoro ~/none/x.ZLT"_s), u"report: 3024"_s});
        row("open", &JobFiles::ApriLavoro, true, u"b.zlt"_s, {u"job"_s, opened(u"B.ZLT"_s)});
        row("open, other format", &JobFiles::ApriLavoro, true, u"OLD.ZLT"_s,
            {u"job"_s,
             u"message: Formato non compatibile, eseguire la conversione dell'archivio"_s});
        row("duplicate", &JobFiles::DuplicaLavoro, true, u"COPIA"_s,
            {u"job"_s, busy(u"Duplicazione ~/A.ZLT su ~/COPIA.ZLT"_s, opened(u"COPIA.ZLT"_s))});
        row("duplicate, name exists", &JobFiles::DuplicaLavoro, true, u"B"_s, {u"report: 3204"_s});
        row("delete other", &JobFiles::EliminaLavoro, true, u"b.zlt"_s,
            {Confirm.arg(u"B.ZLT"_s), AskCopies.arg(u"B.ZLT"_s), InTrash.arg(u"B.ZLT"_s)});
        row("delete open job", &JobFiles::EliminaLavoro, true, u"a.zlt"_s,
            {Confirm.arg(A), AskCopies.arg(A), u"job"_s, InTrash.arg(A)});
        row("delete, no copy possible", &JobFiles::EliminaLavoro, true, u"text.zlt"_s,
            {Confirm.arg(u"TEXT.ZLT"_s),
             u"confirm: Del file non si può conservare una copia di sicurezza.\n\nIl file "
             u"«~/TEXT.ZLT» non è un database riconosciuto.\n\nEliminarlo ugualmente?"_s,
             InTrash.arg(u"TEXT.ZLT"_s)});
        row("delete, no job", &JobFiles::EliminaLavoro, true, u"a.bak"_s,
            {u"message: Il file selezionato non è un database ZELTO"_s});
        row("delete, missing", &JobFiles::EliminaLavoro, true, u"none.zlt"_s,
            {Confirm.arg(u"none.zlt"_s), u"report: 3024"_s});
        row("compact open job", &JobFiles::CompattaArchivio, true, u"a.zlt"_s,
            {busy(u"Compattamento ~/A.BAK to ~/A.ZLT"_s)});
        row("compact, no database", &JobFiles::CompattaArchivio, false, u"TEXT.ZLT"_s,
            {busy(u"Compattamento ~/TEXT.BAK to ~/TEXT.ZLT"_s), u"report: 3343"_s});
        row("repair, Windows edition", &JobFiles::RiparaArchivio, true, u"JET.ZLT"_s,
            {WindowsEdition});
        row("repair open job", &JobFiles::RiparaArchivio, true, u"a.zlt"_s,
            {RepairStatus + A, u"status"_s,
             u"message: Il file «~/A.ZLT» era integro: è stato soltanto riscritto."_s});
        row("repair, beyond repair", &JobFiles::RiparaArchivio, true, u"text.zlt"_s,
            {RepairStatus + u"TEXT.ZLT"_s, u"status"_s, u"report: 3049"_s});
    }
    /// What the window was last told is open is open.
    void conversations()
    {
        QFETCH(Operation, operation);
        QFETCH(bool, jobOpen);
        QFETCH(QString, answer);
        QFETCH(QStringList, said);
        JobDesk desk;
        if (jobOpen)
            desk.open(A);
        const QStringList before = desk.folder.names();
        const QString after = said.join(u'\n');
        QCOMPARE(desk.carryOut(operation, {u"~/"_s + answer}),
                 question(operation, jobOpen) + u'\n' + after);
        QString openAfter = jobOpen ? u"~/A.ZLT"_s : QString();
        for (const QString& line : after.split(u'\n'))
            if (line == u"job" || line.startsWith(u"job: "))
                openAfter = line.mid(5);
        QCOMPARE(desk.openJob(), openAfter);
        QCOMPARE(desk.jobs.job().isOpen(), !openAfter.isEmpty());
        if (said.last().startsWith(u"report"))
            QCOMPARE(desk.folder.names(), before);
    }

    void cancelling()
    {
        JobDesk desk;
        desk.open(A);
        const QStringList before = desk.folder.names();
        for (const Question& asked : Questions) {
            QCOMPARE(desk.carryOut(asked.operation), question(asked.operation, true));
            QCOMPARE(desk.folder.names(), before);
            QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
        }
        desk.user.saysYes = false;
        QVERIFY(desk.carryOut(&JobFiles::EliminaLavoro, {desk.a}).endsWith(Confirm.arg(A)));
        QCOMPARE(desk.folder.names(), before);
    }

    /// Without an open job, what to duplicate is asked first.
    void sourceOfTheDuplicate()
    {
        const QString source =
            u"open: Selezionare Lavoro da Aprire, 4108, Tabelle Millessimi (*.ZLT)|*.zlt in []"_s;
        JobDesk desk;
        const auto said = [&](const QStringList& answers) {
            return desk.carryOut(&JobFiles::DuplicaLavoro, answers);
        };
        QCOMPARE(said({}), source);
        QCOMPARE(said({u"~/JET.ZLT"_s}), source + u'\n' + WindowsEdition);
        QCOMPARE(said({u"~/TEXT.ZLT"_s}), source + u"\nreport: 3343"_s);
        const QStringList conversation{
            source, question(&JobFiles::DuplicaLavoro, false),
            u"choose: Quale file si deve creare?Crea «…/Scala.1.ZLT»|Crea «…/SCA.ZLT»"_s,
            busy(u"Duplicazione ~/B.ZLT su ~/Scala.1.ZLT"_s, opened(u"Scala.1.ZLT"_s))};
        QCOMPARE(said({u"~/b.zlt"_s, u"~/Scala.1"_s}), conversation.join(u'\n'));
    }

    void documentWindows_data() { writing()("delete", &JobFiles::EliminaLavoro, u"~/a.zlt"_s); }
    /// They close before the job does; one that refuses stops the operation.
    void documentWindows()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, answer);
        JobDesk desk;
        desk.open(A);
        desk.user.hasDocuments = true;
        desk.user.documentsClose = false;
        const QStringList before = desk.folder.names();
        QVERIFY(desk.carryOut(operation, {answer}).endsWith(u"close documents"));
        QCOMPARE(desk.folder.names(), before);
        QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
        desk.jobs.ApriLavoro();
        desk.jobs.LeggiRecent(0);
        desk.jobs.openGiven(desk.path(u"B.ZLT"_s));
        QCOMPARE(desk.user.said(), QStringList(3, CloseWindows).join(u'\n'));

        desk.user.documentsClose = true;
        QVERIFY(!desk.carryOut(operation, {answer}).contains(u"report"));
        QVERIFY(!desk.user.hasDocuments);
        QVERIFY(desk.folder.names() != before || operation == &JobFiles::RiparaArchivio);
    }

    void duplicateTakesCompanions()
    {
        JobDesk desk;
        RawFile(desk.a).run("UPDATE ZELTO SET Utente='Rossi'");
        for (const char16_t* name : {u"a.bak", u"A.html", u"AB.TXT", u"A.ZLT-journal"})
            writeBytes(desk.path(QString::fromUtf16(name)), QString::fromUtf16(name).toUtf8());
        desk.carryOut(&JobFiles::DuplicaLavoro, {desk.a, u"~/NUOVO"_s});
        QCOMPARE(desk.openJob(), u"~/NUOVO.ZLT"_s);
        QCOMPARE(desk.jobs.job().JobDatabase().records(TabellaZelto).text(1), u"Rossi"_s);
        QCOMPARE(desk.folder.names().filter(u"NUOVO"_s),
                 QStringList({u"NUOVO.bak"_s, u"NUOVO.html"_s, u"NUOVO.ZLT"_s}));
        QCOMPARE(bytesOf(desk.path(u"NUOVO.bak"_s)), "a.bak");
        QCOMPARE(bytesOf(desk.path(u"NUOVO.html"_s)), "A.html");
    }

    void newJobIsWhole()
    {
        JobDesk desk;
        // What an engine left beside a file that is no more must not be taken for the new one's.
        writeBytes(desk.path(u"x.ZLT-journal"_s), QByteArray(5000, 'x'));
        desk.carryOut(&JobFiles::NuovoLavoro, {u"~/x"_s});
        QCOMPARE(desk.jobs.job().JobDatabase().count(TabellaVani), 1);
        QCOMPARE(desk.jobs.job().JobFolder(), desk.folder.path());
        QCOMPARE(desk.folder.names().filter(u"x.ZLT"_s), QStringList(u"x.ZLT"_s));

        QVERIFY(QDir().mkdir(desk.path(u"v.2"_s)));
        const auto made = [&](std::optional<int> choice, const QString& name) {
            desk.user.choice = choice;
            desk.carryOut(&JobFiles::NuovoLavoro, {u"~/v.2/"_s + name});
            return desk.jobs.JobPath();
        };
        QCOMPARE(made(1, u"lavoro"_s), desk.path(u"v.ZLT"_s));
        QCOMPARE(made(0, u"lavoro"_s), desk.path(u"v.2/lavoro.ZLT"_s));
        QCOMPARE(made({}, u"altro"_s), desk.path(u"v.2/lavoro.ZLT"_s)); // cancelled
    }

    /// All of how the building is calculated, nothing of which it is; the model stays as it is.
    void newJobFromModel()
    {
        const QString chooses = u"open: Selezionare il lavoro che fa da modello, 4108, Tabelle "
                                "Millessimi (*.ZLT)|*.zlt in []"_s;
        JobDesk desk;
        const QString model = desk.folder.example(u"MODELLO.ZLT"_s);
        const QByteArray before = bytesOf(model);
        const auto said = [&](const QStringList& answers) {
            return desk.carryOut(&JobFiles::NuovoDaModello, answers);
        };
        QCOMPARE(said({}), chooses);
        QCOMPARE(said({u"~/JET.ZLT"_s}), chooses + u'\n' + WindowsEdition);
        QCOMPARE(said({u"~/TEXT.ZLT"_s}), chooses + u"\nreport: 3343"_s);
        QVERIFY(said({u"~/OLD.ZLT"_s}).endsWith(u"eseguire la conversione dell'archivio"));
        QCOMPARE(said({model, u"~/b"_s}).section(u'\n', -1), u"report: 3204"_s);
        QCOMPARE(said({model, u"~/x"_s}).section(u'\n', 2),
                 busy(u"Creazione nuovo lavoro ~/x.ZLT"_s, opened(u"x.ZLT"_s)));
        QCOMPARE(bytesOf(model), before);

        Database source = Database::open(model, OpenMode::ReadOnly);
        Database& made = desk.jobs.job().JobDatabase();
        QCOMPARE(made.records(TabellaVariabili).record(),
                 source.records(TabellaVariabili).record());
        const Record own = source.records(TabellaDatiGenerali).record();
        const Record taken = made.records(TabellaDatiGenerali).record();
        for (std::size_t field = 1; field < own.size(); ++field)
            QCOMPARE(taken[field], field < 5 ? Value() : own[field]);
        QCOMPARE(made.count(TabellaUnita), 1);
        QCOMPARE(made.count(TabellaVani), 1);

        // A model of an earlier edition has no lists.
        said({u"~/EARLIER.ZLT"_s, u"~/y"_s});
        QCOMPARE(desk.jobs.job().JobDatabase().records(TabellaVariabili).text(0), u" "_s);
        QVERIFY(!Database::open(desk.path(u"EARLIER.ZLT"_s))
                     .tableNames()
                     .contains(TabellaVariabili.toString()));
    }

    void nothingHalfMade_data() { writing(); }
    /// On a full disk, and in a folder that cannot be written.
    void nothingHalfMade()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, answer);
        JobDesk desk;
        desk.open(A);
        const QStringList names = desk.folder.names();
        const QByteArray before = bytesOf(desk.a);
        const auto refused = [&](const char* errors) {
            const QString report =
                desk.carryOut(operation, {answer}).section(u"report: "_s, 1).section(u'\n', 0, 0);
            QVERIFY2(QString::fromUtf8(errors).split(u' ').contains(report), qPrintable(report));
            QCOMPARE(desk.folder.names(), names);
            QCOMPARE(bytesOf(desk.a), before);
            desk.jobs.chiudiLavoro();
            desk.open(A);
        };
        {
            const DiskLimit full(8192);
            refused("3026 3043");
        }
        QFile::setPermissions(desk.folder.path(), QFile::Permissions::fromInt(0x5555));
        const PlainUser plain;
        refused("3051 3027");
    }

    void filesAreReopened()
    {
        JobDesk desk;
        desk.open(A);
        desk.carryOut(&JobFiles::CompattaArchivio, {desk.a});
        desk.jobs.job().JobDatabase().Execute(u"DELETE FROM Vani"_s);
        QCOMPARE(Database::open(desk.a).count(TabellaVani), 0);
        QCOMPARE(Database::open(desk.path(u"A.BAK"_s)).count(TabellaVani), 1);

        // A job that is beyond repair does not stay open.
        writeBytes(desk.a, "no database any more");
        QVERIFY(desk.carryOut(&JobFiles::RiparaArchivio, {desk.a})
                    .endsWith(u"report: 3049\njob\nreport: 3343"));
        QCOMPARE(desk.openJob(), QString());
        QCOMPARE(bytesOf(desk.a), "no database any more");
    }
};

ZELTO_TEST(TestJobFiles)
#include "tst_job_files.moc"
