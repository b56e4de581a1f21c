// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"

#include <QByteArrayList>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <functional>
#include <getopt.h>
#include <iterator>
#include <vector>

namespace zelto::cli {

namespace {

constexpr int MaxPrimaPagina = 999;

/// "a, b and c".
QString enumerated(QStringList words, const QString& conjunction)
{
    const QString last = words.takeLast();
    return words.join(u", "_s) + conjunction + last;
}

/// The words of the comma-separated list, all of them known.
QStringList readList(const QString& list, const QString& option, const QStringList& known)
{
    QStringList chosen;
    for (const QString& name : list.split(u',')) {
        if (!known.contains(name.trimmed()))
            throw UsageError(u"%1: «%2» non è una voce dell'elenco"_s.arg(option, name));
        chosen << name.trimmed();
    }
    return chosen;
}

reports::FormatoDettaglio readFormato(const QString& text)
{
    if (text == u"esteso")
        return reports::FormatoDettaglio::Esteso;
    if (text == u"compatto")
        return reports::FormatoDettaglio::Compatto;
    throw UsageError(u"--formato: «%1» non è esteso né compatto"_s.arg(text));
}

int readPrimaPagina(const QString& text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > MaxPrimaPagina)
        throw UsageError(u"--prima-pagina: «%1» non è un numero da 1 a %2"_s.arg(
            text, QString::number(MaxPrimaPagina)));
    return number;
}

QString readImporto(const QString& text)
{
    static const QRegularExpression amount(u"^ *-?[0-9 ]*[0-9][0-9 ]*([.,][0-9]{0,2})? *$"_s);
    if (!amount.match(text).hasMatch())
        throw UsageError(u"--riparto: «%1» non è un importo"_s.arg(text));
    return text;
}

/// The kinds of shares as one types them.
QStringList shareWords()
{
    QStringList words;
    for (const reports::TableKind& kind : reports::tableKinds())
        words << (kind.keyName.isEmpty() ? kind.shareWord : kind.shareWord + u'=' + kind.keyName);
    return words;
}

reports::InsiemeQuote readQuote(const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    const QString value = equals < 0 ? QString() : text.sliced(equals + 1);
    for (const reports::TableKind& kind : reports::tableKinds()) {
        if (kind.keyName.isEmpty() && text == kind.shareWord)
            return {.kind = &kind};
        if (kind.keyName.isEmpty() || text.left(equals) != kind.shareWord)
            continue;
        if (const QString key = kind.readKey(value); !key.isEmpty())
            return {.kind = &kind, .key = key};
    }
    throw UsageError(u"--quote: «%1» non è %2"_s.arg(text, enumerated(shareWords(), u" o "_s)));
}

const QString Dettaglio = u"dettaglio"_s;

QStringList calculationWords()
{
    return QStringList(Dettaglio) + reports::tableWords();
}

/// What the options say, with the parts that only make sense together.
struct Pieces : Options
{
    std::optional<QString> importo;
    std::optional<reports::InsiemeQuote> quote;
    bool calcoloGiven = false;
    int given = 0; ///< options
    bool quadratura = false;
};

/// An option, as getopt and the help know it.
struct CommandOption
{
    QByteArray name;
    QString value; ///< what the help calls it; empty when it takes none
    QString help;
    std::function<void(Pieces& pieces, const QString& value)> apply;
    char letter = 0; ///< its short form
};

/// Of what is printed.
std::vector<CommandOption> printOptions()
{
    return {
        {"pdf", u"FILE"_s,
         u"le pagine stampate in un PDF; con più lavori FILE è una\n"
         u"cartella, un PDF per lavoro (senza -o nessun PDF)"_s,
         [](Pieces& pieces, const QString& value) { pieces.pdf = value; }, 'o'},
        {"uscite", u"CARTELLA"_s,
         u"cartella di %1\n"
         u"(se manca, quella corrente; con più lavori una\n"
         u"sottocartella per lavoro)"_s.arg(enumerated(reports::textFiles(), u" e "_s)),
         [](Pieces& pieces, const QString& value) { pieces.uscite = value; }, 'u'},
        {"sezioni", u"LISTA"_s,
         u"di %1\n(se manca, %2)"_s.arg(
             reports::sectionWords().join(u','),
             reports::sectionWords(&reports::Section::isUsual).join(u',')),
         [](Pieces& pieces, const QString& value) {
             pieces.sezioni = readList(value, u"--sezioni"_s, reports::sectionWords());
         }},
        {"calcolo", u"LISTA"_s, u"di %1 (se manca, tutte)"_s.arg(calculationWords().join(u',')),
         [](Pieces& pieces, const QString& value) {
             pieces.calcolo.tabelle = readList(value, u"--calcolo"_s, calculationWords());
             pieces.calcolo.dettaglio = pieces.calcolo.tabelle.contains(Dettaglio);
             pieces.calcoloGiven = true;
         }},
        {"formato", u"esteso|compatto"_s, u"formato del dettaglio (se manca, compatto)"_s,
         [](Pieces& pieces, const QString& value) { pieces.calcolo.formato = readFormato(value); }},
        {"indice-proporzionale",
         {},
         u"calcola l'indice di piano in proporzione alla consistenza"_s,
         [](Pieces& pieces, const QString&) {
             pieces.calcolo.indice = calc::IndicePiano::Proporzionale;
         }},
        {"prima-pagina", u"N"_s, u"numero della prima pagina di calcolo (se manca, 1)"_s,
         [](Pieces& pieces, const QString& value) {
             pieces.calcolo.primaPagina = readPrimaPagina(value);
         }},
        {"riparto", u"IMPORTO"_s, u"stampa il riparto dell'importo al posto del calcolo"_s,
         [](Pieces& pieces, const QString& value) { pieces.importo = readImporto(value); }},
        {"quote", shareWords().join(u'|'), u"millesimi del riparto (se manca, generali)"_s,
         [](Pieces& pieces, const QString& value) { pieces.quote = readQuote(value); }},
        {"quadratura",
         {},
         u"quote del riparto che sommano all'importo, al centesimo"_s,
         [](Pieces& pieces, const QString&) { pieces.quadratura = true; }},
    };
}

std::vector<CommandOption> otherOptions()
{
    return {
        {"schede", u"CARTELLA"_s,
         u"la scheda di ogni unità in un PDF (con più lavori una\n"
         u"sottocartella per lavoro)"_s,
         [](Pieces& pieces, const QString& value) { pieces.schede = value; }},
        {"mostra",
         {},
         u"scrive anche le tabelle come testo allineato"_s,
         [](Pieces& pieces, const QString&) { pieces.mostra = true; }},
        {"controllo",
         {},
         u"non stampa: elenca ciò che nei lavori non torna"_s,
         [](Pieces& pieces, const QString&) { pieces.action = Options::Action::Check; }},
        {"help",
         {},
         u"questo aiuto"_s,
         [](Pieces& pieces, const QString&) { pieces.action = Options::Action::ShowHelp; },
         'h'},
        {"version",
         {},
         u"versione del programma"_s,
         [](Pieces& pieces, const QString&) { pieces.action = Options::Action::ShowVersion; }},
    };
}

/// In the order of the help.
std::vector<CommandOption> commandOptions()
{
    std::vector<CommandOption> all = printOptions();
    for (const reports::TableFormat& format : reports::tableFormats())
        all.push_back({format.option.toUtf8(), format.isFolder() ? u"CARTELLA"_s : u"FILE"_s,
                       format.help, [&format](Pieces& pieces, const QString& path) {
                           if (!path.isEmpty())
                               pieces.formati[&format] = path;
                       }});
    std::ranges::move(otherOptions(), std::back_inserter(all));
    return all;
}

/// Jobs of one name would overwrite each other's PDF and text files.
void requireDistinctNames(const QStringList& lavori)
{
    QStringList names;
    for (const QString& lavoro : lavori) {
        const QString name = jobName(lavoro);
        if (names.contains(name, Qt::CaseInsensitive))
            throw UsageError(u"due lavori hanno lo stesso nome «%1»"_s.arg(name));
        names << name;
    }
}

Options complete(Pieces pieces)
{
    if (pieces.action == Options::Action::ShowHelp || pieces.action == Options::Action::ShowVersion)
        return pieces;
    if (pieces.lavori.isEmpty())
        throw UsageError(u"manca il lavoro da stampare"_s);
    if (pieces.action == Options::Action::Check) {
        if (pieces.given > 1)
            throw UsageError(u"--controllo non stampa: non va insieme ad altre opzioni"_s);
        return pieces;
    }
    requireDistinctNames(pieces.lavori);
    if (pieces.quote && !pieces.importo)
        throw UsageError(u"--quote vale solo insieme a --riparto"_s);
    if (pieces.quadratura && !pieces.importo)
        throw UsageError(u"--quadratura vale solo insieme a --riparto"_s);
    if (pieces.calcoloGiven && pieces.importo)
        throw UsageError(u"--calcolo e --riparto non vanno insieme"_s);
    if (pieces.importo) {
        pieces.riparto = reports::OpzioniRiparto{
            .importo = *pieces.importo,
            .quote = pieces.quote.value_or(reports::InsiemeQuote()),
            .arrotondamento = pieces.quadratura ? calc::Arrotondamento::AQuadratura
                                                : calc::Arrotondamento::PerQuota};
        pieces.riparto->quote.indice = pieces.calcolo.indice;
    }
    return pieces;
}

/// Calls apply(option, value) for every option of the arguments, and gives the place of the first
/// argument behind them. Moves options before the jobs.
template <typename Apply>
int readArguments(std::vector<char*>& argv, const std::vector<CommandOption>& options, Apply apply)
{
    constexpr int First = 256; // beyond all letters
    QByteArray letters = ":";
    std::vector<option> known;
    for (const CommandOption& option : options) {
        const int argument = option.value.isEmpty() ? no_argument : required_argument;
        if (option.letter != 0)
            letters += option.letter + QByteArray(argument, ':');
        known.push_back({option.name.constData(), argument, nullptr, First + int(known.size())});
    }
    known.push_back({nullptr, 0, nullptr, 0});
    const int argc = static_cast<int>(argv.size()) - 1;
    optind = 0; // start afresh: getopt keeps its place between calls
    while (true) {
        const int place = optind == 0 ? 1 : optind;
        const int found =
            getopt_long(argc, argv.data(), letters.constData(), known.data(), nullptr);
        if (found == -1)
            return optind;
        if (found == '?' || found == ':')
            throw UsageError((found == ':' ? u"%1: manca il valore"_s : u"%1: opzione non valida"_s)
                                 .arg(QString::fromUtf8(
                                     argv[static_cast<std::size_t>(std::max(optind - 1, place))])));
        apply(found >= First ? options[static_cast<std::size_t>(found - First)]
                             : *std::ranges::find(options, found, &CommandOption::letter),
              QString::fromUtf8(optarg));
    }
}

/// The option as the help lists it, with its text from the same column on.
QString helpLines(const CommandOption& option)
{
    constexpr qsizetype TextColumn = 28;
    const QString newLine = u'\n' + QString(TextColumn, u' ');
    QString head = u"  "_s;
    if (option.letter != 0)
        head += u"-%1, "_s.arg(QLatin1Char(option.letter));
    head += u"--"_s + QString::fromUtf8(option.name);
    if (!option.value.isEmpty())
        head += u' ' + option.value;
    head = head.size() < TextColumn ? head.leftJustified(TextColumn) : head + newLine;
    QString text = option.help;
    return head + text.replace(u'\n', newLine) + u'\n';
}

} // namespace

QString jobName(const QString& lavoro)
{
    const QFileInfo file(lavoro);
    const QString name = file.completeBaseName();
    // Nothing but points would be the folder itself or the one above it.
    return name.count(u'.') == name.size() ? file.fileName() : name;
}

Options parseOptions(const QStringList& arguments)
{
    QByteArrayList bytes;
    for (const QString& argument : arguments)
        bytes << argument.toUtf8();
    std::vector<char*> argv;
    for (QByteArray& argument : bytes)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    Pieces pieces;
    const int jobs = readArguments(
        argv, commandOptions(), [&](const CommandOption& option, const QString& value) {
            // As of a variable of the shell that is not set.
            if (!option.value.isEmpty() && value.isEmpty())
                throw UsageError(u"--%1: il valore è vuoto"_s.arg(QLatin1StringView(option.name)));
            ++pieces.given;
            option.apply(pieces, value);
        });
    for (std::size_t i = static_cast<std::size_t>(jobs); argv[i] != nullptr; ++i)
        pieces.lavori << QString::fromUtf8(argv[i]);
    return complete(std::move(pieces));
}

QString helpText()
{
    QString text =
        u"Uso: zelto-stampa [opzioni] LAVORO.ZLT [LAVORO2.ZLT ...]\n"
        u"Calcola e stampa le tabelle millesimali di uno o più lavori, senza modificarli.\n"
        u"\n"_s;
    for (const CommandOption& option : commandOptions())
        text += helpLines(option);
    return text +
           u"\nStato d'uscita: 0 fatto; 1 comando errato; 2 un lavoro non letto o non stampato;\n"
           u"3 il controllo ha trovato errori.\n"_s;
}

} // namespace zelto::cli
