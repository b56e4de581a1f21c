// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/dump.h"
#include "support/scripted_user.h"
#include "support/window.h"
#include "widgets/grid.h"

namespace zelto::test {

/// What a screen is given, and the screen itself.
class ScreenDesk
{
public:
    /// Over a copy of that job, or over a new one.
    explicit ScreenDesk(const QString& original = {})
        : job(store::Database::open(jobIn(folder, original)))
    {}

    void open(std::unique_ptr<QWidget> opened)
    {
        screen = std::move(opened);
        appear(*screen);
    }
    template <typename Widget>
    [[nodiscard]] Widget& find(const QString& name) const
    {
        return test::find<Widget>(*screen, name);
    }

    /// The cell becomes the current one and gets the keys, the last ones where the focus is then.
    static void type(widgets::Grid& grid, int row, int column, const QString& text)
    {
        grid.setFocus();
        grid.setCurrentCell(row, column);
        press(text + u"<Return>"_s);
    }
    [[nodiscard]] QString dump() { return dumpOf(job); }

    JobFolder folder;
    store::Database job;
    store::Settings settings{folder.file(u"Zelto.ini"_s)};
    ScriptedUser user{folder.file({})};
    std::unique_ptr<QWidget> screen;

private:
    static QString jobIn(const JobFolder& folder, const QString& original)
    {
        if (original.isEmpty())
            return folder.newJob();
        QFile::copy(original, folder.file(u"LAVORO.ZLT"_s));
        return folder.file(u"LAVORO.ZLT"_s);
    }
};

} // namespace zelto::test
