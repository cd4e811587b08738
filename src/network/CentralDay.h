#pragma once

#include "clsRecebimentos1.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class AppContext;

// The codes every counter published to the central for one day, read over a connection of
// its own (a report does not share the counter's link). nullopt with `why` when no central is
// configured or it does not answer.
class CentralDay {
public:
    static std::optional<QList<clsRecebimentos1>> ler(AppContext& ctx, const QDate& dia,
                                                      QString* why);
};
