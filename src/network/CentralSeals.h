#pragma once

#include <QDate>
#include <QStringList>
#include <optional>

class AppContext;
class DirectCentral;

// The closing seals of this counter's days against those the central holds: a closed day whose
// seal differs from the central's, or a day the central sealed that this database no longer
// has, means the database was changed after the day was closed.
class CentralSeals {
public:
    struct Conferencia {
        bool consultada = false; // the central answered
        int conferidos = 0;      // closed days whose seal the central holds, the same
        QStringList semSelo;     // closed days the central has no seal of (not sent yet)
        QStringList diferencas;  // each one fails the audit
    };
    // Every closed day, or only `dia`.
    static Conferencia conferir(AppContext& ctx, DirectCentral& central,
                                std::optional<QDate> dia = std::nullopt);
};
