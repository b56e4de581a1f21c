// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/print_sequence.h"

#include "reports/text_output.h"

#include <algorithm>

namespace zelto::reports {

namespace {

/// Tables whose figures go to one text file; to none without a name.
struct TableGroup
{
    QString outputFile;
    Tables tables;
};

std::vector<TableGroup> computed(const SizedJob& job, const OpzioniCalcolo& opzioni)
{
    std::vector<TableGroup> groups;
    for (const TableKind& kind : tableKinds()) {
        if (!opzioni.tabelle.contains(kind.word))
            continue;
        groups.push_back({kind.outputFile, {}});
        for (const TableChoice& choice : kind.choices(job.modello))
            groups.back().tables.push_back(kind.table(job, choice, opzioni.indice));
    }
    return groups;
}

std::vector<TableGroup> computed(const SizedJob& job, const OpzioniRiparto& opzioni)
{
    return {{{}, {tabellaRiparto(job, opzioni)}}};
}

std::vector<TableGroup> computed(const SizedJob& job, const OpzioniStampa& opzioni)
{
    return std::visit([&](const auto& one) { return computed(job, one); }, opzioni);
}

void writeOutput(const ReportContext& context, const TableGroup& group)
{
    TextOutput output(context.outputFolder, group.outputFile);
    for (const TableReport& table : group.tables) {
        if (!table.plainTitle.isEmpty())
            output.writeLine({table.plainTitle});
        for (const TableRow& row : table.rows)
            if (!row.plain.isEmpty())
                output.writeLine(row.plain);
    }
    output.commit();
}

/// The calculation, its figures computed before anything is drawn.
class Calculation
{
public:
    Calculation(const calc::ModelloLavoro& modello, const OpzioniStampa& opzioni)
        : m_job(modello), m_options(opzioni), m_calcolo(std::get_if<OpzioniCalcolo>(&opzioni))
    {
        if (hasDetail())
            controllaProspetto(m_job);
        m_groups = computed(m_job, opzioni);
    }

    void draw(ReportPage& page, const ReportContext& context) const
    {
        context.status.SetStatus(documentKind(m_options).printTitle, true);
        if (hasDetail()) {
            context.engine.beginSection(u"Dettaglio U.I."_s);
            StampaProspetto(page, context, m_job, m_calcolo->formato);
        }
        for (const TableGroup& group : m_groups) {
            for (const TableReport& table : group.tables) {
                context.engine.beginSection(table.name);
                printTable(page, table);
            }
            if (!group.outputFile.isEmpty())
                writeOutput(context, group);
        }
    }

private:
    [[nodiscard]] bool hasDetail() const { return m_calcolo != nullptr && m_calcolo->dettaglio; }

    SizedJob m_job;
    const OpzioniStampa& m_options;
    const OpzioniCalcolo* m_calcolo; ///< these options, unless they are an allocation's
    std::vector<TableGroup> m_groups;
};

Drawing preparedCalculation(const ReportContext& context, const OpzioniStampa& opzioni)
{
    return [calculation = Calculation(context.modello, opzioni), &context](ReportPage& page) {
        calculation.draw(page, context);
    };
}

Drawing preparedSheets(const ReportContext& context, const OpzioniStampa& opzioni)
{
    return [schede = schedeUnita(context.modello, context.scritto, opzioni),
            &context](ReportPage& page) {
        context.status.SetStatus(u"Stampa schede delle unità"_s, true);
        schede.draw(page);
    };
}

Drawing preparedChart(const ReportContext& context, const OpzioniStampa& opzioni)
{
    return [tables = tabelleScelte(context.modello, opzioni), &context](ReportPage& page) {
        context.status.SetStatus(u"Stampa grafico dei millesimi"_s, true);
        for (const TableReport& table : tables)
            StampaGrafico(page, context, table);
    };
}

/// A section that computes nothing and has pages of its own.
template <void (*Draw)(const ReportContext&)>
Drawing prepared(const ReportContext& context, const OpzioniStampa& /*opzioni*/)
{
    return [&context](ReportPage& /*page*/) { Draw(context); };
}

QStringList wordsOf(const auto& items)
{
    QStringList words;
    for (const auto& item : items)
        words << item.word;
    return words;
}

} // namespace

const std::vector<Section>& sections()
{
    static const std::vector<Section> all{
        {.word = u"prima-pagina"_s,
         .caption = u" Prima pagina"_s,
         .prepared = prepared<StampaPrimaPagina>},
        {.word = u"relazione"_s, .caption = u" Relazione"_s, .prepared = prepared<StampaRelazione>},
        {.word = SezioneCalcolo, .caption = u" Calcolo"_s, .prepared = preparedCalculation},
        {.word = u"schede"_s,
         .caption = u" Schede"_s,
         .isUsual = false,
         .prepared = preparedSheets},
        {.word = u"grafico"_s,
         .caption = u" Grafico"_s,
         .isUsual = false,
         .inAllocation = false,
         .prepared = preparedChart},
    };
    return all;
}

QStringList sectionWords()
{
    return wordsOf(sections());
}

QStringList sectionWords(bool Section::*chosen)
{
    QStringList words;
    for (const Section& section : sections())
        if (section.*chosen)
            words << section.word;
    return words;
}

QStringList tableWords()
{
    return wordsOf(tableKinds());
}

QStringList textFiles()
{
    QStringList names{ConsistenzaOut};
    for (const TableKind& kind : tableKinds())
        if (!kind.outputFile.isEmpty())
            names << kind.outputFile;
    return names;
}

const DocumentKind& documentKind(const OpzioniStampa& opzioni)
{
    static const std::array kinds{
        DocumentKind{u"Tabelle millesimali"_s, u"Stampa prospetto dei calcoli"_s,
                     u"Calcolo dei millesimi del condominio"_s,
                     u"condominio, millesimi, tabelle millesimali"_s},
        DocumentKind{u"Riparto importo"_s, u"Stampa riparto importo"_s,
                     u"Riparto di un importo in base ai millesimi del condominio"_s,
                     u"condominio, millesimi, riparto"_s, u" - riparto"_s}};
    return kinds.at(opzioni.index());
}

print::PdfInfo documentInfo(const OpzioniStampa& opzioni, const calc::ModelloLavoro& modello)
{
    const QString building =
        u"%1 %2"_s
            .arg(modello.datiGenerali[u"Descrizione"_s], modello.datiGenerali[u"Descrizionee"_s])
            .simplified();
    const DocumentKind& kind = documentKind(opzioni);
    QString title = kind.title;
    if (!building.isEmpty())
        title += u" - "_s + building;
    return {.title = title,
            .author = print::userFullName(),
            .subject = kind.subject,
            .keywords = kind.keywords};
}

Tables tabelleScelte(const calc::ModelloLavoro& modello, const OpzioniStampa& opzioni)
{
    Tables all;
    if (modello.unita.empty())
        return all;
    for (TableGroup& group : computed(SizedJob(modello), opzioni))
        std::ranges::move(group.tables, std::back_inserter(all));
    return all;
}

Schede schedeUnita(const calc::ModelloLavoro& modello, const calc::LavoroScritto& scritto,
                   const OpzioniStampa& opzioni)
{
    const auto* riparto = std::get_if<OpzioniRiparto>(&opzioni);
    const calc::IndicePiano indice =
        riparto != nullptr ? riparto->quote.indice : std::get<OpzioniCalcolo>(opzioni).indice;
    return {modello, scritto, tabelleScelte(modello, OpzioniCalcolo{.indice = indice}),
            riparto != nullptr ? tabelleScelte(modello, opzioni) : Tables()};
}

void stampaDocumento(const ReportContext& context, const QStringList& sezioni,
                     const OpzioniStampa& opzioni)
{
    // What is refused is so first of all, and leaves nothing on paper and in files.
    std::vector<std::pair<const Section*, Drawing>> drawings;
    for (const Section& section : sections())
        if (sezioni.contains(section.word))
            drawings.emplace_back(&section, section.prepared(context, opzioni));
    const auto* calcolo = std::get_if<OpzioniCalcolo>(&opzioni);
    ReportPage page(context, calcolo != nullptr ? calcolo->primaPagina : 1);
    for (const auto& [section, draw] : drawings) {
        context.engine.beginSection(section->caption.trimmed());
        draw(page);
    }
}

} // namespace zelto::reports
