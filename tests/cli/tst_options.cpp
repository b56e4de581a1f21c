// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::cli;

namespace {

Options parse(const QString& line)
{
    return parseOptions(QStringList{u"zelto-stampa"_s} + line.split(u' ', Qt::SkipEmptyParts));
}

/// The choices of a command line as one text.
QString summary(const Options& o)
{
    using zelto::calc::IndicePiano;
    QStringList parts{o.lavori.join(u'+')};
    parts << o.sezioni;
    const auto add = [&](bool chosen, const QString& name) {
        if (chosen)
            parts << name;
    };
    add(o.calcolo.dettaglio, u"dettaglio"_s);
    for (const QString& kind : zelto::reports::tableWords())
        add(o.calcolo.tabelle.contains(kind), kind);
    add(o.calcolo.formato == zelto::reports::FormatoDettaglio::Esteso, u"esteso"_s);
    add(o.calcolo.indice == IndicePiano::Proporzionale, u"proporzionale"_s);
    add(o.mostra, u"mostra"_s);
    const auto riparto = o.riparto.value_or(zelto::reports::OpzioniRiparto());
    add(riparto.arrotondamento == zelto::calc::Arrotondamento::AQuadratura, u"quadratura"_s);
    add(riparto.quote.indice == IndicePiano::Proporzionale, u"quote-proporzionali"_s);
    parts << u"p%1"_s.arg(o.calcolo.primaPagina) << o.pdf << o.uscite;
    for (const auto& [format, path] : o.formati)
        parts << path;
    add(!o.schede.isEmpty(), u"schede="_s + o.schede);
    add(o.riparto.has_value(),
        riparto.importo + u'/' + riparto.quote.kind->word + riparto.quote.key);
    return parts.join(u' ');
}

} // namespace

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void accepted_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("choices");
        const QString all = u"prima-pagina relazione calcolo dettaglio generali tabelle scale"_s;
        const auto row = [](const char* name, const QString& line, const QString& choices) {
            QTest::newRow(name) << line << choices;
        };
        row("defaults", u"A.ZLT"_s, u"A.ZLT "_s + all + u" p1  ."_s);
        row("outputs", u"-o a.pdf A B --uscite=u"_s, u"A+B "_s + all + u" p1 a.pdf u"_s);
        row("sections", u"--sezioni relazione,calcolo --calcolo scale A"_s,
            u"A relazione calcolo scale p1  ."_s);
        row("sections that are not usual", u"--sezioni grafico,schede --schede s A"_s,
            u"A grafico schede dettaglio generali tabelle scale p1  . schede=s"_s);
        row("layout", u"--formato esteso --indice-proporzionale --prima-pagina 12 --mostra A"_s,
            u"A "_s + all + u" esteso proporzionale mostra p12  ."_s);
        row("allocation", u"--riparto 1000,50 A"_s, u"A "_s + all + u" p1  . 1000,50/generali"_s);
        row("allocation by table", u"--riparto 5 --quote tabella=3 A"_s,
            u"A "_s + all + u" p1  . 5/tabelle3"_s);
        row("allocation by staircase", u"--riparto 5 --quote scala=b --indice-proporzionale A"_s,
            u"A "_s + all + u" proporzionale quote-proporzionali p1  . 5/scaleB"_s);
        row("closed allocation", u"--riparto 5 --quadratura A"_s,
            u"A "_s + all + u" quadratura p1  . 5/generali"_s);
        row("spreadsheets", u"--xlsx t.xlsx --csv t A"_s, u"A "_s + all + u" p1  . t.xlsx t"_s);
        row("job that looks like an option", u"-- -A"_s, u"-A "_s + all + u" p1  ."_s);
    }

    void accepted()
    {
        QFETCH(QString, line);
        QTEST(summary(parse(line)), "choices");
    }

    /// Each with what the message has to name.
    void refused()
    {
        const std::vector<std::pair<QString, QString>> cases{
            {u"--mostra"_s, u"lavoro"_s},
            {u"--stampa A.ZLT"_s, u"--stampa"_s},
            {u"-x A.ZLT"_s, u"-x"_s},
            {u"A.ZLT -o"_s, u"-o"_s},
            {u"--schede= A.ZLT"_s, u"--schede"_s},
            {u"--mostra=si A.ZLT"_s, u"--mostra"_s},
            {u"--sezioni calcolo,copertina A.ZLT"_s, u"copertina"_s},
            {u"--calcolo= A.ZLT"_s, u"--calcolo"_s},
            {u"--formato medio A.ZLT"_s, u"medio"_s},
            {u"--prima-pagina 0 A.ZLT"_s, u"--prima-pagina"_s},
            {u"--prima-pagina 1000 A.ZLT"_s, u"--prima-pagina"_s},
            {u"--riparto 10.005 A.ZLT"_s, u"10.005"_s},
            {u"--riparto 5 --quote tabella=11 A.ZLT"_s, u"tabella=11"_s},
            {u"--riparto 5 --quote scala= A.ZLT"_s, u"scala="_s},
            {u"--quadratura A.ZLT"_s, u"--quadratura"_s},
            {u"--quote generali A.ZLT"_s, u"--quote"_s},
            {u"--calcolo scale --riparto 5 A.ZLT"_s, u"--calcolo"_s},
            {u"x/A.ZLT y/a.zlt"_s, u"«a»"_s},
        };
        for (const auto& [line, named] : cases) {
            try {
                parse(line);
                QFAIL(qPrintable(line));
            } catch (const UsageError& error) {
                QVERIFY2(QString::fromUtf8(error.what()).contains(named), error.what());
            }
        }
    }
};

ZELTO_TEST(TestOptions)
#include "tst_options.moc"
