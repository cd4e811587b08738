#pragma once

#include "Money.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;
class clsRecebimentos;

// One row of Estornos: a receipt as it was just before it was reversed or changed, with who did
// it, when and why; a change also keeps the values it received. Nothing is deleted from here:
// undoing a reversal only marks its row.
class clsEstornos {
public:
    enum class Operacao { Estorno, Alteracao };

    explicit clsEstornos(clsDataAccess& db) : m_db(&db) {}

    qint32 ID = 0;
    Operacao OPERACAO = Operacao::Estorno;
    QDateTime MOMENTO;
    QString USUARIO;
    QString MOTIVO;
    // The receipt before the operation, every column.
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
    // A change only: what the receipt became.
    std::optional<qint32> NOVO_AUTENTICA;
    QString NOVO_CODBARRA;
    std::optional<qint16> NOVO_TIPO;
    std::optional<Money> NOVO_VALOR;
    // A reversal undone: when and by whom.
    QDateTime REVERTIDO_EM;
    QString REVERTIDO_POR;

    // Copies every column of the receipt into the "before" columns.
    void copiarRecebimento(const clsRecebimentos& r);
    // The receipt as it was kept, ready to be written back.
    void restaurarEm(clsRecebimentos& r) const;

    bool SQLSelect(qint32 id);
    bool SQLInsert(); // ID read back
    bool SQLMarcarRevertido(const QDateTime& quando, const QString& usuario);

    // Every row, oldest first.
    static std::optional<QList<clsEstornos>> listarTodos(clsDataAccess& db);
    // The movement's rows, newest first.
    static std::optional<QList<clsEstornos>> listarDoMovimento(clsDataAccess& db,
                                                               qint32 idMovimento);
    // The movement's reversals not undone yet, newest first.
    static std::optional<QList<clsEstornos>> estornosAbertos(clsDataAccess& db, qint32 idMovimento);
    // The latest reversal of the receipt that was not undone; nullopt when there is none or
    // the read failed.
    static std::optional<clsEstornos> ultimoEstorno(clsDataAccess& db, qint32 idRecebe);

private:
    static std::optional<QList<clsEstornos>> select(clsDataAccess& db, const QString& where,
                                                    const QVariantList& params);
    clsDataAccess* m_db; // a pointer so rows can be copied
};
