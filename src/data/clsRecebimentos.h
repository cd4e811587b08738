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
    clsDataAccess* m_db; // a pointer so rows can be copied
};
