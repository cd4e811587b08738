#pragma once

#include "Money.h"

#include <QDate>
#include <QString>
#include <optional>

class AppContext;

// A loose document stamped at the counter (no receipt is recorded): the header, the counter,
// the date of the cash day and the amount, on the authenticating printer.
class DocumentStamp {
public:
    static constexpr int kHeaderWidth = 10;
    static constexpr int kValueWidth = 12;

    // [Print] cabecalho: "1" stamps the authentication header ([Mensagem] cabecalho), "0" or
    // nothing stamps none, any other text is stamped as the header itself.
    static QString header(const QString& printCabecalho, const QString& mensagemCabecalho);
    // "PMX A 23/11/2026        150,00R"
    static QString line(const QString& header, const QString& guiche, const QDate& date,
                        Money valor);

    enum class Outcome { Sent, InvalidValue, PrinterOff };
    // Checks the amount (positive, fits the stamp) and that the printer is enabled, and composes
    // the line into `text`; Sent means it is ready to be stamped.
    static Outcome preparar(AppContext& ctx, const std::optional<Money>& valor, QString* text);
};
