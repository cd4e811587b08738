#pragma once

#include "Money.h"

#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One row of Recebimentos: a document paid at the counter.
class clsRecebimentos {
public:
    static const QString kSemCodigo; // the 44 zeros of an item without barcode

    explicit clsRecebimentos(clsDataAccess& db) : m_db(&db) {}

    qint32 IDRECEBE = 0;
    qint16 AUTENTICA = 0;
    QString CODBARRA;
    qint16 IDMOVIMENTO = 0;
    qint16 TIPO = 0;
    qint16 INTEGRA = 0;
    qint16 EXPORT = 0;
    Money VALOR;
    QString VENCIMENTO;
    QString PARCELA;
    QString OBS;

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
        qint16 autentica = 0;
        QString descricao;
        Money valor;
    };
    static std::optional<QList<Lancado>> listarDoMovimento(clsDataAccess& db, qint32 idMovimento);

    // Corrections and reversals.
    // Writes the row back under its own IDRECEBE, every column as given (undoing a reversal).
    bool SQLRestore();
    // The receipts of a movement with their kind, newest first; with `autentica`, only that one.
    struct Corrigivel {
        qint32 idrecebe = 0;
        qint16 autentica = 0;
        qint16 idcod = 0;
        QString descricao;
        Money valor;
        QString codbarra;
    };
    static std::optional<QList<Corrigivel>>
    listarParaCorrecao(clsDataAccess& db, qint32 idMovimento, std::optional<qint16> autentica = {});
    // Whether a receipt of the movement other than `outro` carries this authentication number.
    static std::optional<bool> autenticaEmUso(clsDataAccess& db, qint32 idMovimento,
                                              qint16 autentica, qint32 outro);
    // Whether a receipt other than `outro` carries this barcode.
    static std::optional<bool> codigoEmUso(clsDataAccess& db, const QString& codbarra,
                                           qint32 outro);

private:
    clsDataAccess* m_db; // a pointer so rows can be copied
};
