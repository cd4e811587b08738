#pragma once

#include "clsMovimento.h"

#include <QDate>
#include <optional>

class AppContext;

// The movement of a date and whether it is open: the one rule the screens, the commands and the
// core ask, so none looks a cash day up its own way.
class DayMovement {
public:
    // The date's movement (the newest, should a database hold two); nullopt when it has none.
    static std::optional<clsMovimento> of(clsDataAccess& db, const QDate& day);
    // The movement of the working date.
    static std::optional<clsMovimento> ofWorkingDate(AppContext& ctx);
    // Whether the movement `id` is open; nullopt when it cannot be read.
    static std::optional<bool> isOpen(clsDataAccess& db, qint32 id);
};
