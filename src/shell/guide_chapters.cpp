// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/guide_chapters.h"

#include "text/literals.h"

#include <QWidget>

namespace zelto::shell {

const std::map<QString, QString>& guideChapters()
{
    static const std::map<QString, QString> chapters{
        {u"Main"_s, u"La finestra principale"_s},
        {u"PaginaIniziale"_s, u"La pagina iniziale"_s},
        {u"MenuFile"_s, u"Il menu File"_s},
        {u"RipristinaCopia"_s, u"Copie di sicurezza"_s},
        {u"DatiGenerali"_s, u"Dati generali"_s},
        {u"Variabili"_s, u"Variabili"_s},
        {u"Parametri"_s, u"Parametri"_s},
        {u"UI"_s, u"La scheda Elenco"_s},
        {u"SchedaDettaglio"_s, u"La scheda Dettaglio"_s},
        {u"TabFlex"_s, u"La scheda Vani"_s},
        {u"Controllo"_s, u"Controllo del lavoro"_s},
        {u"Millesimi"_s, u"Calcolo millesimi"_s},
        {u"Riparto"_s, u"Riparto importo"_s},
        {u"frmPreview"_s, u"Anteprima di stampa"_s},
        {u"PaginePDF"_s, u"Anteprima di stampa"_s},
    };
    return chapters;
}

QString guideChapter(const QWidget* widget)
{
    for (; widget != nullptr; widget = widget->parentWidget())
        if (const auto found = guideChapters().find(widget->objectName());
            found != guideChapters().end())
            return found->second;
    return {};
}

} // namespace zelto::shell
