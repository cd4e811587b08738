#pragma once

#include "AuditChain.h"
#include "Money.h"
#include "Recordset.h"

#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>
#include <optional>

class clsDataAccess;

// One row of Recebimentos: a document paid at the counter. Every write joins the audit chain in
// the same transaction (AuditChain).
class clsRecebimentos {
public:
    static const QString kSemCodigo; // the 44 zeros of an item without barcode
    // The highest authentication number a movement may give: the integration file carries it in
    // five digits.
    static constexpr qint32 kMaxAutentica = 99999;

    explicit clsRecebimentos(clsDataAccess& db) : m_db(&db) {}

    qint32 IDRECEBE = 0;
    qint32 AUTENTICA = 0;
    QString CODBARRA;
    qint16 IDMOVIMENTO = 0;
    qint16 TIPO = 0;
    qint16 INTEGRA = 0;
    qint16 EXPORT = 0;
    Money VALOR;
    QString VENCIMENTO;
    QString PARCELA;
    QString OBS;
    QDateTime MOMENTO;    // when it was recorded, by the computer's clock; written on insert only
    qint64 DUPLICADO = 0; // not 0: a repetition found in an older database, kept and marked

    // A code that may be received once: not empty and not starting "000" (the 44 zeros and
    // other codes without a document of their own repeat freely).
    static bool isUniqueCode(const QString& code);
    // Whether `code` is already among the receipts; nullopt when the query failed.
    static std::optional<bool> codigoRecebido(clsDataAccess& db, const QString& code);
    // The movement's receipts by authentication number, with their kind's description.
    struct ComTipo;
    static std::optional<QList<ComTipo>> listarMovimento(clsDataAccess& db, qint32 idMovimento);

    bool SQLSelect(qint32 idRecebe);
    // AUTENTICA takes the movement's highest number; with no receipts it keeps its value
    // and the answer is false.
    bool SQLSelectMax(qint32 idMovimento);
    bool SQLInsert(); // forces EXPORT 1 for the 44 zeros; IDRECEBE read back
    bool SQLUpdate(); // every column but INTEGRA and EXPORT
    bool SQLUpdateIntegra(qint32 idMovimento, int flag);
    bool SQLUpdateExport(qint32 idRecebe, int flag);
    bool SQLDelete();

    // How many receipts carry this barcode.
    static std::optional<int> contarCodigo(clsDataAccess& db, const QString& codbarra);

    // The receipts of a movement with their kind's description, newest first (lstLancado).
    struct Lancado {
        qint32 idrecebe = 0;
        qint32 autentica = 0;
        QString descricao;
        Money valor;
    };
    static std::optional<QList<Lancado>> listarDoMovimento(clsDataAccess& db, qint32 idMovimento);
    // Receipts of one movement and kind with the given EXPORT mark, in authentication order:
    // the lists of the export screen and the receipts of a bank file. Rows carry IDRECEBE,
    // AUTENTICA, VALOR, CODBARRA and EXPORT. nullopt when the query failed.
    static std::optional<QList<clsRecebimentos>>
    listarExportacao(clsDataAccess& db, qint32 idMovimento, int tipo, int exportFlag);
    // EXPORT of several receipts (IDRECEBE, mark), all in one transaction or none.
    static bool SQLUpdateExport(clsDataAccess& db, const QList<QPair<qint32, int>>& marks);
    // The receipts of a movement whose kind exists in CodBarra, in the order they were
    // recorded (IDRECEBE, AUTENTICA, VALOR, CODBARRA, EXPORT, TIPO): the integration file's.
    static std::optional<QList<clsRecebimentos>> paraIntegracao(clsDataAccess& db,
                                                                qint32 idMovimento);

    // Corrections and reversals.
    // Writes the row back under its own IDRECEBE, every column as given (undoing a reversal).
    bool SQLRestore();
    // The receipts of a movement with their kind, newest first; with `autentica`, only that one.
    struct Corrigivel {
        qint32 idrecebe = 0;
        qint32 autentica = 0;
        qint16 idcod = 0;
        QString descricao;
        Money valor;
        QString codbarra;
    };
    static std::optional<QList<Corrigivel>>
    listarParaCorrecao(clsDataAccess& db, qint32 idMovimento, std::optional<qint32> autentica = {});
    // Whether a receipt of the movement other than `outro` carries this authentication number.
    static std::optional<bool> autenticaEmUso(clsDataAccess& db, qint32 idMovimento,
                                              qint32 autentica, qint32 outro);
    // Whether a receipt other than `outro` carries this barcode.
    static std::optional<bool> codigoEmUso(clsDataAccess& db, const QString& codbarra,
                                           qint32 outro);
    // One page of that list: at most `limite` receipts below the id `antesDe` (0: from the
    // newest), so a long day is read a screenful at a time.
    static std::optional<QList<Lancado>> listarDoMovimento(clsDataAccess& db, qint32 idMovimento,
                                                           qint32 antesDe, int limite);
    // How many receipts a movement has and their sum, counted by the database.
    struct Resumo {
        qint64 quantidade = 0;
        Money total;
    };
    static std::optional<Resumo> resumoDoMovimento(clsDataAccess& db, qint32 idMovimento);
    // The movement's receipt with this authentication number, with its kind's description.
    bool SQLSelectAutentica(qint32 idMovimento, qint32 autentica, QString* descricao);

private:
    void fill(const Recordset& rs);
    bool track(AuditChain::Op op);
    clsDataAccess* m_db; // a pointer so rows can be copied
};

struct clsRecebimentos::ComTipo {
    clsRecebimentos r;
    QString descricao;
};
