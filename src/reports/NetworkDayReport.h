#pragma once

#include "Money.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class AppContext;

// Every counter's day as the central sees it: the codes each one published, their documents'
// value, the last one's moment and whether its closing seal of the day reached the central
// (unknown when the seals could not be read). The queue and the conflicts live in each counter's
// own database, so only this counter's are known here.
struct NetworkDayReport {
    enum class Selo { Desconhecido, Recebido, Ausente };
    struct Counter {
        QString guiche;
        bool esteGuiche = false;
        qint64 quantidade = 0;
        Money valorDocumentos; // the value the codes carry (the central keeps no amounts)
        QDateTime ultimo;
        std::optional<qint64> pendentes;        // codes still queued (this counter only)
        std::optional<qint64> conflitosAbertos; // refused codes not reversed (this counter only)
        Selo selo = Selo::Desconhecido;
    };
    QDate data;
    QList<Counter> guiches;

    static std::optional<NetworkDayReport> montar(AppContext& ctx, const QDate& dia, QString* why);
};
