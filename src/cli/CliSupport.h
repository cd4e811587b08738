#pragma once

#include "Acrescimos.h"
#include "BarcodeReader.h"
#include "CliCommand.h"
#include "DateScreenLogic.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonObject>
#include <optional>

// What the commands share: the working date, the operator's and the administrator's password
// from standard input, and the JSON output.
class CliSupport {
public:
    // --data DD/MM/AAAA, else today. nullopt (message on stderr) when the text is not a date.
    static std::optional<QDate> workingDate(CliEnv& e);
    // The date screen's rules for a command whose operator the dispatcher logged in: --data,
    // checked exactly as frmData checks it. Answers -1 to go on, else the exit code.
    static int chooseDay(CliEnv& e, DateScreenLogic::Action action);
    // The passwords `act` needs (Permissions), each read by `line` only when needed: the
    // operator's, then an administrator's. Answers -1 to go on, else the exit code.
    static int authorize(AppContext& ctx, Act act, QTextStream& err,
                         const std::function<QString()>& line);

    // The charges of an overdue guide, as `ler`, `encargos` and `caixa receber` print them.
    static void addEncargos(QJsonObject& o, const Encargos& e);

    // The word of a reading's outcome in the JSON ("aceito", "recebida" ...).
    static QString resultado(ReadingDecision::Outcome o);
    // "F", "C" or "0000": the layout a code was read by.
    static QString padrao(ReadingDecision::Route r);

    static void printJson(CliEnv& e, const QJsonObject& o);
    static void printJson(CliEnv& e, const QJsonArray& a);
};
