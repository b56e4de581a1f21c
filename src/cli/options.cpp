// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"

#include <QByteArrayList>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <getopt.h>
#include <map>
#include <vector>

namespace zelto::cli {

namespace {

constexpr int MaxPrimaPagina = 999;

enum Option : int {
    Pdf = 'o',
    Uscite = 'u',
    Help = 'h',
    Sezioni = 256,
    Calcolo,
    Formato,
    IndiceProporzionale,
    PrimaPagina,
    Riparto,
    Quote,
    Quadratura,
    Xlsx,
    Csv,
    Mostra,
    Version,
};

constexpr std::array LongOptions{
    option{"pdf", required_argument, nullptr, Pdf},
    option{"uscite", required_argument, nullptr, Uscite},
    option{"sezioni", required_argument, nullptr, Sezioni},
    option{"calcolo", required_argument, nullptr, Calcolo},
    option{"formato", required_argument, nullptr, Formato},
    option{"indice-proporzionale", no_argument, nullptr, IndiceProporzionale},
    option{"prima-pagina", required_argument, nullptr, PrimaPagina},
    option{"riparto", required_argument, nullptr, Riparto},
    option{"quote", required_argument, nullptr, Quote},
    option{"quadratura", no_argument, nullptr, Quadratura},
    option{"xlsx", required_argument, nullptr, Xlsx},
    option{"csv", required_argument, nullptr, Csv},
    option{"mostra", no_argument, nullptr, Mostra},
    option{"help", no_argument, nullptr, Help},
    option{"version", no_argument, nullptr, Version},
    option{nullptr, 0, nullptr, 0},
};

/// Sets to true what the comma-separated list names, everything else to false.
void readList(const QString& list, const QString& option, const std::map<QString, bool*>& choices)
{
    for (const auto& [name, chosen] : choices)
        *chosen = false;
    for (const QString& name : list.split(u',')) {
        const auto choice = choices.find(name.trimmed());
        if (choice == choices.end())
            throw UsageError(u"%1: «%2» non è una voce dell'elenco"_s.arg(option, name));
        *choice->second = true;
    }
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

reports::InsiemeQuote readQuote(const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    const QString kind = text.left(equals);
    const QString value = equals < 0 ? QString() : text.sliced(equals + 1);
    if (text == u"generali")
        return reports::MillesimiGenerali{};
    if (kind == u"tabella") {
        bool isNumber = false;
        const int t = value.toInt(&isNumber);
        if (isNumber && t >= 1 && t <= calc::MaxTabelle)
            return reports::TabellaSpecifica{t};
    }
    if (kind == u"scala" && !value.isEmpty())
        return reports::MillesimiScala{.codice = value.toUpper()};
    throw UsageError(u"--quote: «%1» non è generali, tabella=N o scala=CODICE"_s.arg(text));
}

/// The parts of the command line that only make sense together.
struct Pieces
{
    Options options;
    std::optional<QString> importo;
    std::optional<reports::InsiemeQuote> quote;
    bool calcoloGiven = false;
    bool quadratura = false;
};

void apply(Pieces& pieces, int option, const QString& value)
{
    Options& options = pieces.options;
    switch (option) {
    case Pdf:
        options.pdf = value;
        break;
    case Uscite:
        options.uscite = value;
        break;
    case Sezioni:
        readList(value, u"--sezioni"_s,
                 {{u"prima-pagina"_s, &options.sezioni.primaPagina},
                  {u"relazione"_s, &options.sezioni.relazione},
                  {u"calcolo"_s, &options.sezioni.calcolo}});
        break;
    case Calcolo:
        readList(value, u"--calcolo"_s,
                 {{u"dettaglio"_s, &options.calcolo.dettaglio},
                  {u"generali"_s, &options.calcolo.generali},
                  {u"tabelle"_s, &options.calcolo.tabelle},
                  {u"scale"_s, &options.calcolo.scale}});
        pieces.calcoloGiven = true;
        break;
    case Formato:
        options.calcolo.formato = readFormato(value);
        break;
    case IndiceProporzionale:
        options.calcolo.indice = calc::IndicePiano::Proporzionale;
        break;
    case PrimaPagina:
        options.calcolo.primaPagina = readPrimaPagina(value);
        break;
    case Riparto:
        pieces.importo = readImporto(value);
        break;
    case Quote:
        pieces.quote = readQuote(value);
        break;
    case Quadratura:
        pieces.quadratura = true;
        break;
    case Xlsx:
        options.xlsx = value;
        break;
    case Csv:
        options.csv = value;
        break;
    case Mostra:
        options.mostra = true;
        break;
    case Help:
        options.action = Options::Action::ShowHelp;
        break;
    case Version:
        options.action = Options::Action::ShowVersion;
        break;
    default:
        break;
    }
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
    Options& options = pieces.options;
    if (options.action != Options::Action::Print)
        return options;
    if (options.lavori.isEmpty())
        throw UsageError(u"manca il lavoro da stampare"_s);
    requireDistinctNames(options.lavori);
    if (pieces.quote && !pieces.importo)
        throw UsageError(u"--quote vale solo insieme a --riparto"_s);
    if (pieces.quadratura && !pieces.importo)
        throw UsageError(u"--quadratura vale solo insieme a --riparto"_s);
    if (pieces.calcoloGiven && pieces.importo)
        throw UsageError(u"--calcolo e --riparto non vanno insieme"_s);
    if (pieces.importo) {
        options.riparto = reports::OpzioniRiparto{
            .importo = *pieces.importo,
            .quote = pieces.quote.value_or(reports::MillesimiGenerali{}),
            .arrotondamento = pieces.quadratura ? calc::Arrotondamento::AQuadratura
                                                : calc::Arrotondamento::PerQuota};
        if (auto* scala = std::get_if<reports::MillesimiScala>(&options.riparto->quote))
            scala->indice = options.calcolo.indice;
    }
    return options;
}

/// getopt's verdict on an argument that it could not read.
[[noreturn]] void refuse(int verdict, const char* argument)
{
    const QString name = QString::fromUtf8(argument);
    throw UsageError(verdict == ':' ? u"%1: manca il valore"_s.arg(name)
                                    : u"%1: opzione non valida"_s.arg(name));
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
    argv.reserve(static_cast<std::size_t>(bytes.size()) + 1);
    for (QByteArray& argument : bytes)
        argv.push_back(argument.data());
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);

    Pieces pieces;
    optind = 0; // start afresh: getopt keeps its place between calls
    while (true) {
        const int place = optind == 0 ? 1 : optind;
        const int option = getopt_long(argc, argv.data(), ":o:u:h", LongOptions.data(), nullptr);
        if (option == -1)
            break;
        if (option == '?' || option == ':')
            refuse(option, argv[static_cast<std::size_t>(std::max(optind - 1, place))]);
        apply(pieces, option, QString::fromUtf8(optarg));
    }
    for (int i = optind; i < argc; ++i)
        pieces.options.lavori << QString::fromUtf8(argv[static_cast<std::size_t>(i)]);
    return complete(std::move(pieces));
}

QString helpText()
{
    return u"Uso: zelto-stampa [opzioni] LAVORO.ZLT [LAVORO2.ZLT ...]\n"
           u"Calcola e stampa le tabelle millesimali di uno o più lavori, senza modificarli.\n"
           u"\n"
           u"  -o, --pdf FILE            le pagine stampate in un PDF; con più lavori FILE è una\n"
           u"                            cartella, un PDF per lavoro (senza -o nessun PDF)\n"
           u"  -u, --uscite CARTELLA     cartella di consistenza.out, calcolo.out e scale.out\n"
           u"                            (se manca, quella corrente; con più lavori una\n"
           u"                            sottocartella per lavoro)\n"
           u"  --sezioni LISTA           di prima-pagina,relazione,calcolo (se manca, tutte)\n"
           u"  --calcolo LISTA           di dettaglio,generali,tabelle,scale (se manca, tutte)\n"
           u"  --formato esteso|compatto formato del dettaglio (se manca, compatto)\n"
           u"  --indice-proporzionale    calcola l'indice di piano in proporzione alla "
           u"consistenza\n"
           u"  --prima-pagina N          numero della prima pagina di calcolo (se manca, 1)\n"
           u"  --riparto IMPORTO         stampa il riparto dell'importo al posto del calcolo\n"
           u"  --quote generali|tabella=N|scala=CODICE\n"
           u"                            millesimi del riparto (se manca, generali)\n"
           u"  --quadratura              quote del riparto che sommano all'importo, al centesimo\n"
           u"  --xlsx FILE               le tabelle in una cartella di lavoro per fogli di "
           u"calcolo;\n"
           u"                            con più lavori FILE è una cartella, un file per lavoro\n"
           u"  --csv CARTELLA            le tabelle in file CSV, uno per tabella (con più lavori\n"
           u"                            una sottocartella per lavoro)\n"
           u"  --mostra                  scrive anche le tabelle come testo allineato\n"
           u"  -h, --help                questo aiuto\n"
           u"  --version                 versione del programma\n"
           u"\n"
           u"Stato d'uscita: 0 fatto; 1 comando errato; 2 un lavoro non letto o non stampato.\n"_s;
}

} // namespace zelto::cli
