#pragma once

#include "Money.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One row of AutenticacoesAvulsas: a loose document stamped at the counter (no receipt behind
// it), written before it goes to the printer and marked confirmed when the printer stamped it.
// The rows are in the audit chain.
class clsAutenticacaoAvulsa {
public:
    explicit clsAutenticacaoAvulsa(clsDataAccess& db) : m_db(&db) {}

    qint64 ID = 0;
    QDateTime MOMENTO;
    QDate DIA; // the cash day printed on the stamp
    Money VALOR;
    QString TEXTO; // the line as stamped
    QString GUICHE;
    QString OPERADOR;      // at the counter
    QString ADMINISTRADOR; // who allowed it
    bool CONFIRMADA = false;

    bool SQLInsert(); // ID read back
    bool SQLConfirmar();

    // Every row (of the cash day `dia` when given), oldest first.
    static std::optional<QList<clsAutenticacaoAvulsa>> listar(clsDataAccess& db,
                                                              std::optional<QDate> dia);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
