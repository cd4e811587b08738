#pragma once

#include "Money.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// ConflitoRede: a code received here that the central refused because another counter (or an
// imported earlier year) already had it. The money was taken; the row is the supervisor's list
// for a refund or a check. It joins the audit chain.
class clsConflitoRede {
public:
    explicit clsConflitoRede(clsDataAccess& db) : m_db(&db) {}

    qint64 ID = 0;
    qint64 IDPUBLICACAO = 0; // the outbox row the central refused
    QString CODBARRA;
    qint64 IDRECEBE = 0;
    qint32 AUTENTICA = 0;
    qint32 IDMOVIMENTO = 0;
    Money VALOR;
    QDateTime MOMENTO;       // when it was received here
    QString GUICHE_CENTRAL;  // who holds it at the central (empty: imported)
    QString MOMENTO_CENTRAL; // as the central has it
    QDateTime DETECTADO;     // when the central refused it
    bool estornado = false;  // read only: the receipt is no longer in Recebimentos

    // Once per refused outbox row: false also when it is already recorded (`novo` false).
    bool SQLInsert(bool* novo = nullptr);
    // Every conflict, newest first; nullopt on failure.
    static std::optional<QList<clsConflitoRede>> listar(clsDataAccess& db);

private:
    clsDataAccess* m_db;
};
