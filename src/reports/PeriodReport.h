#pragma once

#include "ReceiptFigures.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class AppContext;

// The receipts of a run of days: per day and kind, per kind, and per hour of the day (when the
// counter is busy). Each day is read with the query of the day's bulletin.
struct PeriodReport {
    struct Day {
        QDate data;
        qint16 mov = 0;
        QString status;
        ReceiptFigures figuras;
    };
    QString prefeitura;
    QString guiche;
    QDate de;
    QDate ate;
    QString emitidoPor;
    QDateTime emitidoEm;
    QList<Day> dias; // only the days that have a movement, in date order
    QList<ReceiptFigures::Kind> porTipo;
    ReceiptFigures::Kind todos;
    std::array<ReceiptFigures::Kind, 24> porHora;

    static constexpr int kMaxDias = 366;
    // nullopt with `why` when the dates are reversed, the run is longer than kMaxDias or a
    // query failed.
    static std::optional<PeriodReport> montar(AppContext& ctx, const QDate& de, const QDate& ate,
                                              QString* why);
};
