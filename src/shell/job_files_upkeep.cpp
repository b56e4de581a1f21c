// SPDX-License-Identifier: GPL-3.0-or-later
// Operations on jobs as files: delete, compact, repair, restore a copy.
#include "shell/job_files.h"
#include "store/file_operations.h"
#include "store/files/new_file.h"
#include "store/job_copies.h"
#include "store/recovery/repair.h"
#include "widgets/dialogs.h"
#include "widgets/main_window_services.h"

#include <QDir>

namespace zelto::shell {

using Request = widgets::FileDialogRequest;

namespace {

constexpr QStringView BackupExtension = u".BAK";
const QString DatabaseFilter = JobFilter + u"|Database Access (*.MDB)|*.mdb"_s;

QString repairMessage(const QString& path, const store::RepairResult& result)
{
    if (result.damagedOriginal.isEmpty())
        return u"Il file «%1» era integro: è stato soltanto riscritto."_s.arg(path);
    if (!result.damaged)
        return u"Il file «%1» era leggibile, ma non come lo scrive Zelto: è stato rifatto con "
               u"tutti i "
               "suoi dati. Unità: %2; vani: %3. Il file di prima è conservato come «%4»."_s.arg(
                   path, QString::number(result.units), QString::number(result.rooms),
                   result.damagedOriginal);
    const QString cut =
        result.missingPages > 0
            ? u" Il file finiva prima del dovuto: mancano %1 pagine su %2, con tutto ciò che "
              "contenevano."_s.arg(QString::number(result.missingPages),
                                   QString::number(result.pages))
            : QString();
    return u"L'archivio era danneggiato. Unità recuperate: %1; vani recuperati: %2; record o campi "
           "perduti: almeno %3.%4\n\nControllare tutti i dati del lavoro. Il file danneggiato è "
           "conservato come «%5»."_s.arg(
               QString::number(result.units), QString::number(result.rooms),
               QString::number(result.leftOut), cut, result.damagedOriginal);
}

/// A name that tells the restored job from the one of today.
QString restoredName(const store::JobCopy& copy)
{
    return u"%1 %2"_s.arg(store::nameOf(store::withoutExtension(copy.job)),
                          copy.kept.toString(u"yyyy-MM-dd HH-mm"_s));
}

} // namespace

void JobFiles::withFilesClosed(const std::function<void()>& operation)
{
    const auto reporting = [&](const std::function<void()>& step) {
        try {
            step();
        } catch (const std::exception& error) {
            m_dialogs.ReportError(error);
        }
    };
    m_job.suspend();
    reporting(operation);
    reporting([&] { m_job.resume(); });
}

bool JobFiles::leftToOtherWindow(const QString& path)
{
    return m_job.isOpenElsewhere(path) &&
           !m_dialogs.confirmLoss(
               u"Il lavoro «%1» è aperto in un'altra finestra di Zelto, che non "
               "potrà più modificarlo senza riaprirlo.\n\nProseguire?"_s.arg(path));
}

bool JobFiles::mayReplace(const QString& path)
{
    return !path.isEmpty() && !refusedAsWindowsJob(path) && !leftToOtherWindow(path) &&
           documentsClosed();
}

void JobFiles::EliminaLavoro()
{
    const QString path = askFile({.title = u"Selezionare Lavoro da Eliminare"_s,
                                  .filter = JobFilter,
                                  .flags = Request::FileMustExist,
                                  .initialFolder = {},
                                  .kind = Request::Kind::Save});
    if (path.isEmpty())
        return;
    if (!store::hasJobExtension(path))
        m_dialogs.showMessage(u"Il file selezionato non è un database ZELTO"_s);
    else if (m_dialogs.confirmLoss(u"Confermi cancellazione del file ''%1''?"_s.arg(path)) &&
             !leftToOtherWindow(path))
        deleteJob(path);
}

void JobFiles::deleteJob(const QString& path)
{
    const QString file = store::realPath(path); // by which the copies are found when it is gone
    if (!mayGoAfterCopy(file))
        return;
    const bool withCopies = copiesGoToo(file);
    if (m_job.isAt(path)) {
        if (!documentsClosed())
            return;
        m_job.close();
    }
    const bool trashed =
        store::deleteFile(path, [&](const QString& one) { return m_dialogs.moveToTrash(one); });
    if (withCopies)
        m_copies.removeAll(file);
    m_dialogs.showMessage((trashed ? u"Il file «%1» è stato spostato nel cestino."_s
                                   : u"Il file «%1» è stato cancellato: non c'è un cestino che lo "
                                     "prenda."_s)
                              .arg(path));
}

bool JobFiles::copiesGoToo(const QString& path)
{
    const qsizetype copies = m_copies.count(path);
    return copies > 0 &&
           m_dialogs.confirmLoss(u"Copie di sicurezza del lavoro «%1»: %2. Contengono anch'esse i "
                                 "nomi e i dati del condominio.\n\nCancellare anche quelle?"_s.arg(
                                     path, QString::number(copies)));
}

/// Keeps a copy of what is about to go; false when that fails and the user would rather not go on.
bool JobFiles::mayGoAfterCopy(const QString& path)
{
    try {
        m_copies.keep(path);
        return true;
    } catch (const store::DatabaseError& error) {
        if (error.number() == store::ErrorNumber::FileNotFound ||
            error.number() == store::ErrorNumber::InUse)
            throw;
        return m_dialogs.confirmLoss(u"Del file non si può conservare una copia di sicurezza.\n\n%1"
                                     "\n\nEliminarlo ugualmente?"_s.arg(error.description()));
    }
}

void JobFiles::CompattaArchivio()
{
    const QString source = askFile({.title = u"Selezionare Database da Compattare"_s,
                                    .filter = DatabaseFilter,
                                    .flags = Request::FileMustExist,
                                    .initialFolder = m_job.JobFolder()});
    if (!mayReplace(source))
        return;
    const QString backup = store::asOnDisk(
        store::withUpperCaseName(store::withoutExtension(source) + BackupExtension.toString()));
    withFilesClosed([&] {
        const widgets::StatusScope status(m_window,
                                          u"Compattamento "_s + backup + u" to "_s + source);
        store::compact(source, backup);
    });
}

void JobFiles::RiparaArchivio()
{
    const QString path = askFile({.title = u"Selezionare Database da Riparare"_s,
                                  .filter = DatabaseFilter,
                                  .flags = Request::AnyFile,
                                  .initialFolder = m_job.JobFolder()});
    repairGiven(path);
}

void JobFiles::repairGiven(const QString& path)
{
    if (!mayReplace(path))
        return;
    std::optional<store::RepairResult> result;
    withFilesClosed([&] {
        const widgets::StatusScope status(m_window, u"Riparazione database - "_s + path,
                                          widgets::StatusScope::Pointer::Normal);
        try {
            if (store::hasJobExtension(path))
                m_copies.keep(path);
        } catch (const store::DatabaseError&) {
            // A damaged file stays beside the repaired one.
        }
        result = store::repair(path);
    });
    if (result)
        m_dialogs.showMessage(repairMessage(path, *result));
}

void JobFiles::RipristinaCopia()
{
    restoreCopyOf(m_job.JobPath());
}

void JobFiles::restoreCopyOf(const QString& path)
{
    if (m_copies.jobs().isEmpty()) {
        m_dialogs.showMessage(u"Non c'è ancora nessuna copia di sicurezza. Zelto ne conserva una "
                              "ogni volta che si apre o si chiude un lavoro cambiato."_s);
        return;
    }
    const std::optional<store::JobCopy> copy = m_dialogs.chooseCopy(m_copies, path);
    if (!copy)
        return;
    const QString target =
        askNewJob(u"Indicare il nome del lavoro ripristinato"_s, store::NameRule::AsTyped,
                  store::folderOf(copy->job), restoredName(*copy));
    if (!target.isEmpty())
        restore(copy->path, target);
}

void JobFiles::restore(const QString& copy, const QString& target)
{
    store::requireFreeName(target);
    if (!documentsClosed())
        return;
    {
        const widgets::StatusScope status(m_window, u"Ripristino copia su "_s + target);
        store::copyDatabase(copy, target);
    }
    openVerified(target, Conversion::Yes);
}

void JobFiles::openExample(const QString& example, const QString& folder)
{
    if (refusedByDocuments())
        return;
    QDir().mkpath(folder);
    const QString stem = u"%1/%2"_s.arg(folder, store::withoutExtension(store::nameOf(example)));
    QString target = stem + store::JobExtension;
    for (int number = 2; !store::findFile(target).isEmpty(); ++number)
        target = u"%1 %2"_s.arg(stem).arg(number) + store::JobExtension;
    store::copyDatabase(example, target);
    openVerified(target, Conversion::Yes);
}

} // namespace zelto::shell
