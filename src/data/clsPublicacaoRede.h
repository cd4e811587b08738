#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// PublicacaoRede: the outbox of the central database. A payment writes one row per code in its
// own transaction, a reversal one row that withdraws it, a day's closing one row with its seal
// (CODBARRA holds the hash, IDMOVIMENTO the day); the sender marks each row once the central has
// it, so nothing is lost while the network is down and nothing is sent twice.
class clsPublicacaoRede {
public:
    enum class Operacao { Publicar, Retirar, Selar };

    explicit clsPublicacaoRede(clsDataAccess& db) : m_db(&db) {}

    qint64 ID = 0;
    Operacao OPERACAO = Operacao::Publicar;
    QString CODBARRA;
    qint64 IDRECEBE = 0;
    qint32 AUTENTICA = 0;
    qint32 IDMOVIMENTO = 0;
    QString GUICHE;
    QDateTime MOMENTO; // when the receipt (or its reversal) was recorded

    // Inside the caller's transaction, so the row stands or falls with the receipts.
    bool SQLInsert();

    // The oldest rows still waiting, in the order they were written; nullopt on failure.
    static std::optional<QList<clsPublicacaoRede>> pendentes(clsDataAccess& db, int limite);
    // The row reached the central: `resultado` says how ("publicado", "conflito", "retirado",
    // "selado").
    static bool marcarEnviado(clsDataAccess& db, qint64 id, const QDateTime& quando,
                              const QString& resultado);

    struct Resumo {
        qint64 pendentes = 0;
        QDateTime maisAntigo;  // of the rows waiting; invalid when none
        QDateTime ultimoEnvio; // invalid when nothing was ever sent
    };
    static std::optional<Resumo> resumo(clsDataAccess& db);

    // The name under which this database publishes (random, given when the tables were made).
    static std::optional<QString> origem(clsDataAccess& db);

    // A central that let a command wait its whole time-out is not waited for again by the next
    // commands until `ate` (UTC); `motivo` is what it said. An invalid `ate` lifts the pause.
    struct Pausa {
        QDateTime ate;
        QString motivo;
    };
    static std::optional<Pausa> pausa(clsDataAccess& db);
    static bool gravarPausa(clsDataAccess& db, const Pausa& p);

    static QString momentText(const QDateTime& t); // ISO with milliseconds
    static QDateTime momentFrom(const QString& text);

private:
    clsDataAccess* m_db;
};
