#pragma once

#include "CorrectionLog.h"
#include "CorrectionRequest.h"
#include "Notice.h"
#include "clsEstornos.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

class AppContext;

// The database side of a correction: what refuses it, and the write in one transaction of the
// receipt, its Estornos row, the Atos row naming the operator and the administrator who allowed
// it, and the central's outbox. It decides inside the transaction and tells nothing.
class CorrectionRecord {
public:
    CorrectionRecord(AppContext& ctx, const CorrectionLog& log);

    // What the transaction did; `recusa` is empty when it was written.
    struct Gravacao {
        explicit Gravacao(clsDataAccess& db) : mov(db), antes(db), depois(db) {}
        Notice recusa;
        clsMovimento mov;
        clsRecebimentos antes;
        clsRecebimentos depois;
        QString motivo;
        bool feito() const { return recusa.empty(); }
    };

    static Notice recusaMotivo(const QString& motivo);
    // The receipt of the working day's open movement, or why there is none.
    Notice recusaRecebimento(qint32 idrecebe, clsRecebimentos& r, clsMovimento& mov);
    // The last reversal of the receipt that can still be undone, or why it cannot.
    Notice recusaEstorno(qint32 idrecebe, clsEstornos& e, clsMovimento& mov);
    // The log of this year cannot be written.
    Notice recusaRegistro();
    // The request applied to the receipt, each value checked against the database.
    Notice valores(const CorrectionRequest& p, const clsRecebimentos& atual, CorrectionValues& v);

    Gravacao estornar(qint32 idrecebe, const QString& motivo);
    Gravacao alterar(qint32 idrecebe, const CorrectionValues& novo, const QString& motivo);
    Gravacao reverter(qint32 idrecebe);

    // The administrator who allowed the correction (the operator when none was named).
    static QString autorizou(const AppContext& ctx);
    // The act's name in the Atos table.
    static QString ato(CorrectionLog::Kind kind);

private:
    // A number or code (those given) that another receipt than `idrecebe` already carries.
    Notice recusaNumeroECodigo(qint32 idrecebe, std::optional<qint32> autentica,
                               const std::optional<QString>& codbarra, qint32 idMovimento);
    Notice recusaAlteracao(const CorrectionValues& novo, Gravacao& g);
    bool gravarAlteracao(const CorrectionValues& novo, Gravacao& g);
    Notice tipoValido(int tipo, qint16 atual);
    clsEstornos registroDe(const clsRecebimentos& r, clsEstornos::Operacao op,
                           const QString& motivo);
    bool registrarAto(CorrectionLog::Kind kind, qint32 idEstorno);

    AppContext& m_ctx;
    const CorrectionLog& m_log;
};
