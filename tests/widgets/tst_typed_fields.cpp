// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "support/window.h"
#include "widgets/typed_line.h"
#include "widgets/typed_text.h"

#include <QClipboard>
#include <QDialog>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using enum FieldKind;
using zelto::test::press;

namespace {

/// A screen with two fields of a kind, a text of several lines and two buttons.
class Screen : public QDialog
{
public:
    explicit Screen(FieldKind kind, int maxLength = 0)
        : line(kind, maxLength), other(kind, maxLength), text(12)
    {
        for (QWidget* widget : std::initializer_list<QWidget*>{&line, &other, &text, &ok, &cancel})
            layout.addWidget(widget);
        ok.setDefault(true);
        cancel.setProperty(TypedLine::LeavesUnchecked, true);
        zelto::test::appear(*this);
    }

    QVBoxLayout layout{this};
    TypedLine line, other;
    TypedText text;
    QPushButton ok, cancel;
    QSignalSpy changed{&line, &TypedLine::changed};
    QSignalSpy clicked{&ok, &QPushButton::clicked};
};

/// Whether something was refused since this was asked last, by the red frame.
bool wasRefused(QWidget& field)
{
    const auto* frame = field.findChild<QWidget*>(u"Rifiuto"_s);
    delete frame;
    return frame != nullptr;
}

/// The text, with "!" where something was refused.
QString shownBy(TypedLine& line)
{
    return line.text() + (wasRefused(line) ? u"!"_s : QString());
}

void compose(QWidget& widget, const QString& preedit, const QString& commit, int replaced = 0)
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit, -replaced, replaced);
    QCoreApplication::sendEvent(&widget, &event);
}

void paste(QWidget& widget, const QString& text)
{
    QApplication::clipboard()->setText(text);
    press(u"<Shift+Ins>"_s, &widget);
}

void drop(QWidget& widget, const QString& text)
{
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&widget, &enter);
    QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&widget, &event);
}

void choosePaste(QWidget& widget, const QString& text)
{
    QApplication::clipboard()->setText(text);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&widget, &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    for (QAction* entry : menu->actions())
        if (entry->text().startsWith(u"&Paste"_s))
            zelto::test::chooseEntry(*menu, *entry);
    QVERIFY(!QApplication::activePopupWidget());
}

void composeAndCommit(QWidget& widget, const QString& text)
{
    compose(widget, text, {});
    compose(widget, {}, text);
}

} // namespace

class TestTypedFields : public QObject
{
    Q_OBJECT

private slots:
    /// After keys in place of another text.
    void keys()
    {
        const auto pressed = [](FieldKind kind, const QString& before, const QString& keys) {
            Screen screen(kind);
            screen.line.setText(before);
            screen.line.selectAll();
            press(keys);
            return shownBy(screen.line);
        };
        QCOMPARE(pressed(DecimalNumber, u"77"_s, u"1.2.3"_s), u"1.23!"_s);
        QCOMPARE(pressed(DecimalNumber, u"77"_s, u"e"_s), u"77!"_s);
        QCOMPARE(pressed(DecimalNumber, u"77"_s, u"1<Num+,>5"_s), u"1.5"_s);
        QCOMPARE(pressed(WholeNumber, u"1234"_s, u"<End><Backspace><Home><Del>"_s), u"23"_s);
        QCOMPARE(pressed(WholeNumber, u"1234"_s, u"<End><Backspace><Home><Ctrl+Z>"_s), u"1234"_s);
        QCOMPARE(pressed(Amount, u"12.34"_s, u"<End><Left>9<Home>9"_s), u"912.34!"_s);
        QCOMPARE(pressed(Date, u"1/2"_s, u"<Ctrl+X><Ctrl+V><Ctrl+V>"_s), u"1/21/2"_s);
    }

    void waysIn()
    {
        const auto brought = [](void (*bring)(QWidget&, const QString&)) {
            Screen screen(Words);
            QStringList shown;
            const auto inField = [&](FieldKind kind, int maxLength, const QString& before,
                                     const QString& text) {
                screen.line.setKind(kind, maxLength);
                screen.line.setText(before);
                screen.line.selectAll();
                bring(screen.line, text);
                shown << shownBy(screen.line);
            };
            inField(WholeNumber, 4, u"9"_s, u"x"_s);
            inField(WholeNumber, 4, {}, u"1234567"_s); // a part would be another figure
            inField(Words, 3, {}, u"è b"_s);
            inField(Amount, 0, {}, u"1.234,50"_s); // which of them is the decimal one?
            inField(Amount, 0, {}, u"1 234,5"_s);
            return shown.join(u'|');
        };
        QCOMPARE(brought(paste), u"9!|!|è b|!|1234.5"_s);
        QCOMPARE(brought(choosePaste), u"9!|!|è b|!|1234.5"_s);
        QCOMPARE(brought(drop), u"9!|!|è b|!|1234.5"_s);
        QCOMPARE(brought(composeAndCommit), u"9!|!|è b|!|!"_s);
    }

    /// A character with Alt or Super is a command, whoever it was meant for.
    void commandCharacters()
    {
        const QList<std::pair<Qt::KeyboardModifiers, QString>> keys{
            {Qt::AltModifier, {}},
            {Qt::AltModifier | Qt::ShiftModifier, {}},
            {Qt::MetaModifier, {}},
            {Qt::ControlModifier | Qt::AltModifier, {}},
            {Qt::GroupSwitchModifier, u"d"_s}};
        for (const auto& [modifiers, text] : keys) {
            Screen screen(Words);
            for (QWidget* field : std::initializer_list<QWidget*>{&screen.line, &screen.text}) {
                QTest::sendKeyEvent(QTest::Click, field, Qt::Key_D, u"d"_s, modifiers);
                QVERIFY(!wasRefused(*field));
            }
            QCOMPARE(screen.line.text(), text);
            QCOMPARE(screen.text.storedText(), text);
        }
    }

    void enterAndFocus()
    {
        Screen screen(DecimalNumber);
        screen.other.setText(u" 1,5"_s);
        press(u"7<Enter>"_s); // entered when the screen opened
        QCOMPARE(screen.changed.count(), 1);
        QCOMPARE(screen.other.selectedText(), u"1.5"_s);
        screen.other.setKind(RunningText, 30);
        press(u"<Return>"_s);
        QVERIFY(screen.other.hasFocus());
        QCOMPARE(screen.clicked.count(), 0);

        screen.line.setOnEntry(TypedLine::OnEntry::Nothing);
        screen.line.setText(u"1,5"_s);
        screen.line.setFocus(Qt::TabFocusReason);
        QVERIFY(!screen.line.hasSelectedText());
        screen.other.setFocus();
        QCOMPARE(screen.line.text(), u"1,5"_s);
        QCOMPARE(screen.changed.count(), 1);
    }

    void leaving()
    {
        const auto left = [](const QString& typed) {
            Screen screen(Date, 10);
            screen.text.setFocus();
            screen.line.setText(u"01/01/2014"_s);
            screen.other.setText(u"bad"_s); // must not claim the focus when the other takes it back
            screen.line.setFocus();
            press(typed);
            {
                QWidget window; // looked at in between
                zelto::test::appear(window);
            }
            screen.activateWindow();
            (void)QTest::qWaitForWindowActive(&screen);
            press(u"<Return>"_s, &screen.line);
            QTest::qWait(20);
            const bool held = screen.line.hasFocus() && screen.line.hasSelectedText();
            return u"%1, %2 changes"_s.arg(shownBy(screen.line)).arg(screen.changed.count()) +
                   (held ? u", held"_s : QString());
        };
        QCOMPARE(left(u"99"_s), u"99!, 0 changes, held"_s);
        QCOMPARE(left(u"31122013"_s), u"31/12/2013, 1 changes"_s);
        QCOMPARE(left(u"01012014"_s), u"01/01/2014, 0 changes"_s);
    }

    void leavingUnchecked()
    {
        const QList<std::function<void(Screen&)>> ways{
            [](Screen& screen) { QTest::mouseClick(&screen.cancel, Qt::LeftButton); },
            [](Screen& screen) { screen.line.setEnabled(false); },
            [](Screen& screen) { screen.line.hide(); }, [](Screen& screen) { screen.close(); }};
        for (const auto& leave : ways) {
            Screen screen(Date, 10);
            press(u"99"_s);
            leave(screen);
            QTest::qWait(20);
            QVERIFY(!screen.line.hasFocus());
            QCOMPARE(screen.changed.count(), 0);
            QCOMPARE(shownBy(screen.line), u"99"_s);
        }
    }

    void storedText()
    {
        for (const auto& [stored, edited] : {std::pair{u"a\r\nb"_s, u"Xa\r\nb"_s},
                                             {u"a\nb\rc\u2028"_s, u"Xa\r\nb\r\nc\r\n"_s},
                                             {u"1\u00a0000"_s, u"X1\u00a0000"_s},
                                             {u"12345\n678901"_s, u"12345\n678901"_s}}) {
            TypedText text(12);
            QSignalSpy changes(&text, &TypedText::edited);
            text.setStoredText(u"before"_s);
            text.setStoredText(stored);
            compose(text, u"´"_s, {});
            compose(text, {}, {});
            QCOMPARE(changes.count(), 0);
            QCOMPARE(text.storedText(), stored);
            press(u"X"_s, &text);
            QCOMPARE(changes.count(), wasRefused(text) ? 0 : 1);
            QCOMPARE(text.storedText(), edited);
            press(u"<Ctrl+Z>"_s, &text);
            QCOMPARE(text.storedText(), stored);
        }
    }

    void reconversionReplacesWhatItSays()
    {
        Screen screen(Words);
        for (QWidget* field : std::initializer_list<QWidget*>{&screen.line, &screen.text}) {
            press(u"abcd"_s, field);
            compose(*field, {}, u"X"_s, 2);
        }
        QCOMPARE(screen.line.text(), u"abX"_s);
        QCOMPARE(screen.text.storedText(), u"abX"_s);
    }

    void linesTyped()
    {
        Screen screen(Words);
        press(u"12345678<Shift+Return><Num+,><Return>"_s, &screen.text);
        QCOMPARE(screen.text.storedText(), u"12345678\r\n."_s);
        QVERIFY(wasRefused(screen.text));
        compose(screen.text, {}, u"😀"_s);
        QCOMPARE(screen.text.storedText(), u"12345678\r\n."_s);
        QVERIFY(wasRefused(screen.text));
        screen.text.selectAll();
        paste(screen.text, u"1\u00a0\r34\n56😀!"_s);
        QCOMPARE(screen.text.storedText(), u"1\u00a0\r\n34\r\n56😀"_s);
        QVERIFY(wasRefused(screen.text));
        QCOMPARE(screen.clicked.count(), 0);
    }
};

ZELTO_TEST(TestTypedFields)
#include "tst_typed_fields.moc"
