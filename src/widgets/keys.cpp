// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/keys.h"

#include "text/literals.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QTabBar>

namespace zelto::widgets {

namespace {

/// AltGr sets none of them, or GroupSwitch as well.
bool hasModifier(const QKeyEvent& key, Qt::KeyboardModifiers wanted)
{
    return key.modifiers().testAnyFlags(wanted) &&
           !key.modifiers().testFlag(Qt::GroupSwitchModifier);
}

} // namespace

void addKey(QWidget& where, const QKeySequence& key, const std::function<void()>& command,
            Qt::ShortcutContext context)
{
    auto* shortcut = new QShortcut(key, &where);
    shortcut->setContext(context);
    QObject::connect(shortcut, &QShortcut::activated, &where, command);
}

void keepRedoKey(QLineEdit& field)
{
    class Filter : public QObject
    {
    public:
        explicit Filter(QLineEdit& line) : QObject(&line), m_line(line)
        {
            line.installEventFilter(this);
        }
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            const auto type = event->type();
            if ((type != QEvent::ShortcutOverride && type != QEvent::KeyPress) ||
                static_cast<QKeyEvent*>(event)->keyCombination() != (Qt::CTRL | Qt::Key_Y) ||
                !m_line.isRedoAvailable())
                return false;
            event->accept();
            if (type == QEvent::KeyPress)
                m_line.redo();
            return true;
        }

    private:
        QLineEdit& m_line;
    };
    new Filter(field);
}

void addTabKeys(QWidget& screen, QTabBar& tabs)
{
    const auto turn = [&tabs](int step) {
        return [&tabs, step] {
            tabs.setCurrentIndex((tabs.currentIndex() + step + tabs.count()) % tabs.count());
        };
    };
    addKey(screen, Qt::CTRL | Qt::Key_Tab, turn(1));
    addKey(screen, Qt::CTRL | Qt::Key_PageDown, turn(1));
    addKey(screen, Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, turn(-1));
    addKey(screen, Qt::CTRL | Qt::Key_PageUp, turn(-1));
}

QString asCaption(QString text)
{
    return text.replace(u'&', u"&&"_s);
}

QString typedBy(const QKeyEvent& key)
{
    const QString text = key.text();
    if (text.isEmpty() || text.front().category() == QChar::Other_Control || isChord(key))
        return {};
    const bool keypad = key.modifiers().testFlag(Qt::KeypadModifier);
    return keypad && text == u"," ? u"."_s : text;
}

bool isEnter(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool isChord(const QKeyEvent& key)
{
    return hasModifier(key, Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool isWithAlt(const QKeyEvent& key)
{
    return hasModifier(key, Qt::AltModifier | Qt::MetaModifier);
}

} // namespace zelto::widgets
