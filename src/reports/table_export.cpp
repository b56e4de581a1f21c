// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_export.h"

namespace zelto::reports {

const std::vector<TableFormat>& tableFormats()
{
    static const std::vector<TableFormat> formats{
        {.option = u"xlsx"_s,
         .extension = u".xlsx"_s,
         .help = u"  --xlsx FILE               le tabelle in una cartella di lavoro per fogli di "
                 u"calcolo;\n"
                 u"                            con più lavori FILE è una cartella, un file per "
                 u"lavoro\n"_s,
         .where = u"nella cartella di lavoro"_s,
         .write = writeWorkbook},
        {.option = u"csv"_s,
         .extension = {},
         .help = u"  --csv CARTELLA            le tabelle in file CSV, uno per tabella (con più "
                 u"lavori\n"
                 u"                            una sottocartella per lavoro)\n"_s,
         .where = u"in formato CSV, nella cartella"_s,
         .write = writeCsv},
    };
    return formats;
}

QStringList sheetNames(const std::vector<TableReport>& tables)
{
    constexpr qsizetype LongestName = 31;
    QStringList names;
    for (const TableReport& table : tables) {
        QString base;
        for (const QChar c : table.name)
            base += u"[]:*?/\\'"_s.contains(c) || !c.isPrint() ? QChar{u' '} : c;
        base = base.simplified();
        if (base.isEmpty() || base.startsWith(u'.'))
            base.prepend(u"Tabella"_s);
        QString name = base.left(LongestName);
        for (int copy = 2; names.contains(name, Qt::CaseInsensitive); ++copy) {
            const QString number = u" (%1)"_s.arg(copy);
            name = base.left(LongestName - number.size()) + number;
        }
        names << name;
    }
    return names;
}

} // namespace zelto::reports
