#pragma once

#include "clsRecebimentos1.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class AppContext;

// The codes every counter published to the central for one day and the counters whose seal of
// that day arrived, read over a connection of its own (a report does not share the counter's
// link). nullopt with `why` when no central is configured or it does not answer.
class CentralDay {
public:
    QList<clsRecebimentos1> recebimentos;
    std::optional<QStringList> selados; // nullopt when the seals could not be read

    static std::optional<CentralDay> ler(AppContext& ctx, const QDate& dia, QString* why);
};
