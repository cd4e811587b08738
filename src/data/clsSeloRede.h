#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class clsDataAccess;

// SelosRede, at the central: the closing seal of each day of each counter (the audit chain's last
// hash when the day was closed), so that a counter's database cannot be rewritten afterwards
// without the central noticing. A day closed again after a reopening adds its new seal; the
// latest one received is the day's seal.
class clsSeloRede {
public:
    explicit clsSeloRede(clsDataAccess& db) : m_db(&db) {}

    QString GUICHE;
    QDate DIA;
    QString HASH;
    QString ORIGEM; // the database that sent it (OrigemRede)
    qint32 IDMOVIMENTO = 0;
    QString ENCERRADO;  // when the counter closed the day, as it recorded it
    QDateTime RECEBIDO; // when the central received it

    // Once: the same seal sent again leaves the row as it is. False on failure.
    bool SQLInsert();
    // The seal the central received last from this counter: false when none, nullopt on failure.
    std::optional<bool> SQLSelectUltimo(const QString& guiche);
    // Every day's seal of this counter (the latest of each day), oldest day first.
    static std::optional<QList<clsSeloRede>> porDia(clsDataAccess& db, const QString& guiche);
    // The counters (GUICHE, trimmed) whose seal of `dia` reached the central.
    static std::optional<QStringList> doDia(clsDataAccess& db, const QDate& dia);

    // In a counter's own database: its closed days with their seal, oldest first.
    struct DiaEncerrado {
        qint32 idMovimento = 0;
        QDate dia;
        QString hash;
    };
    static std::optional<QList<DiaEncerrado>> encerrados(clsDataAccess& local);

private:
    clsDataAccess* m_db;
};
