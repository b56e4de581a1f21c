// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/store_fixture.h"

namespace zelto::test {

/// Units and rooms as "1 Int. 1: 1 Camera, 2; 2: 1", by unit number and position.
inline QString registerText(store::Database& lavoro)
{
    QStringList units;
    auto unit = lavoro.query(
        u"SELECT [Riferimento unità], Riferimento FROM [Unità immobiliari] ORDER BY Chiave"_s);
    for (; !unit.atEnd(); unit.next()) {
        QStringList rooms;
        auto room =
            lavoro.query(u"SELECT Posizione, Ambiente FROM Vani WHERE [Riferimento unità] = :1 "
                         u"ORDER BY Chiave"_s,
                         std::array{unit.field(0)});
        for (; !room.atEnd(); room.next())
            rooms << (room.text(0) + u' ' + room.text(1)).trimmed();
        units << (unit.text(0) + u' ' + unit.text(1)).trimmed() + u": "_s + rooms.join(u", "_s);
    }
    return units.join(u"; "_s);
}

} // namespace zelto::test
