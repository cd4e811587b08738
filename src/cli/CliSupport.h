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
    // The date screen's rules for a command: the operator's password (first line of stdin) and
    // --data, checked exactly as frmData checks them. Answers -1 to go on, else the exit code.
    static int loginOperator(CliEnv& e, DateScreenLogic::Action action);
    // The administrator guard: the first line of stdin must be an administrator's password
    // (given back in `senha` when asked). Answers -1 to go on, else the exit code.
    static int loginAdministrator(CliEnv& e, QString* senha = nullptr);

    // The charges of an overdue guide, as `ler`, `encargos` and `caixa receber` print them.
    static void addEncargos(QJsonObject& o, const Encargos& e);

    // The word of a reading's outcome in the JSON ("aceito", "recebida" ...).
    static QString resultado(ReadingDecision::Outcome o);
    // "F", "C" or "0000": the layout a code was read by.
    static QString padrao(ReadingDecision::Route r);

    static void printJson(CliEnv& e, const QJsonObject& o);
    static void printJson(CliEnv& e, const QJsonArray& a);

    static const QString kAdministradorRecusado; // "Senha de administrador não aceita."
};
