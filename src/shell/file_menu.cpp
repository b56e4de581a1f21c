// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_menu.h"

#include "shell/icons.h"
#include "shell/recent_jobs.h"

#include <QKeySequence>

namespace zelto::shell {

namespace {

constexpr int First = static_cast<int>(FileEntry::PrimoRecente);
constexpr int Last = static_cast<int>(FileEntry::UltimoRecente);

} // namespace

FileMenu::FileMenu(QWidget* parent) : QMenu(u"&File"_s, parent)
{
    setObjectName(u"MenuFile"_s);
    addEntry(FileEntry::Nuovo, u"&Nuovo ..."_s, u"Crea un nuovo lavoro e lo apre"_s, u"nuovo"_s,
             u"Ctrl+N"_s);
    addEntry(FileEntry::Apri, u"&Apri ..."_s, u"Apre un lavoro"_s, u"apri"_s, u"Ctrl+O"_s);
    addEntry(FileEntry::Duplica, u"&Duplica ..."_s,
             u"Copia un lavoro con un altro nome e apre la copia"_s, u"duplica"_s);
    addEntry(FileEntry::Elimina, u"&Elimina ..."_s, u"Mette nel cestino il file di un lavoro"_s,
             u"elimina"_s);
    addDash(7);
    addEntry(FileEntry::Compattamento, u"Compattamento archivio"_s,
             u"Libera lo spazio inutilizzato di un archivio; lo stato di prima resta "
             u"accanto come .BAK"_s,
             u"compatta"_s);
    addEntry(FileEntry::Riparazione, u"Riparazione archivio"_s,
             u"Recupera quanto è ancora leggibile di un archivio danneggiato"_s, u"ripara"_s);
    addEntry(FileEntry::RipristinaCopia, u"&Ripristina copia ..."_s,
             u"Fa un nuovo lavoro di una copia di sicurezza conservata da Zelto"_s,
             u"ripristina"_s);
    addDash(10);
    addEntry(FileEntry::ImpostaStampante, u"Imposta stampante ..."_s,
             u"Sceglie stampante, carta e orientamento"_s, u"stampante"_s);
    addRecentEntries();
    addDash(17);
    addEntry(FileEntry::Uscita, u"Uscita"_s, u"Chiude Zelto"_s, u"uscita"_s, u"Ctrl+Q"_s);
}

void FileMenu::addEntry(FileEntry entry, const QString& caption, const QString& hint,
                        const QString& iconName, const QString& shortcut)
{
    auto* action = new QAction(caption, this);
    action->setStatusTip(hint);
    if (!iconName.isEmpty())
        action->setIcon(shell::icon(iconName));
    action->setShortcut(QKeySequence(shortcut));
    // Desktops that move such entries elsewhere would leave gaps in the menu.
    action->setMenuRole(QAction::NoRole);
    addAt(static_cast<int>(entry), action);
}

void FileMenu::addDash(int index)
{
    auto* dash = new QAction(this);
    dash->setSeparator(true);
    addAt(index, dash);
}

void FileMenu::addRecentEntries()
{
    addDash(static_cast<int>(FileEntry::SeparatoreRecenti));
    for (int k = First; k <= Last; ++k)
        addEntry(FileEntry{k}, {}, u"Apre di nuovo questo lavoro"_s);
}

void FileMenu::addAt(int index, QAction* action)
{
    m_entries.emplace(index, action);
    addAction(action);
    connect(action, &QAction::triggered, this, [this, index] { emit chosen(index); });
}

void FileMenu::showRecentJobs(const shell::RecentJobs& jobs)
{
    for (int k = First; k <= Last; ++k) {
        // The first "&" marks the digit to press, any other belongs to the path.
        QString caption = jobs.caption(k);
        caption.replace(u'&', u"&&"_s).replace(0, 2, u'&');
        VoceFile(k).setText(caption);
        VoceFile(k).setVisible(jobs.isVisible(k));
    }
    VoceFile(static_cast<int>(FileEntry::SeparatoreRecenti)).setVisible(jobs.separatorVisible());
}

} // namespace zelto::shell
