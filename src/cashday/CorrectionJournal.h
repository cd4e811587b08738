#pragma once

#include "CorrectionLog.h"
#include "CorrectionResult.h"
#include "clsEstornos.h"
#include "clsMovimento.h"

#include <map>

class AppContext;

// The yearly log kept from the database: the entry of each correction appended once it is
// recorded, and entries missing (a crash between the commit and the log) appended later, each
// once, from the Estornos rows and the Atos rows that name their people.
class CorrectionJournal {
public:
    explicit CorrectionJournal(AppContext& ctx);

    const CorrectionLog& log() const { return m_log; }
    CorrectionLog::Entry entrada(CorrectionLog::Kind kind, const clsMovimento& mov,
                                 const clsRecebimentos& r, const QString& motivo);
    // Appends the entry; a failure is told through the result.
    void registrar(const CorrectionLog::Entry& e, CorrectionResult& res);
    // How many entries were added; nullopt (reported in Log.ini) on a failure.
    std::optional<int> completar();

    // The description of a kind, or its number when it has none.
    QString descricaoTipo(qint16 idcod);
    // The bank files that carried the receipt ("CnabAGUA202611231030.RET (NSA 3)"), or empty.
    QString arquivosBanco(qint32 idrecebe);

private:
    using PorAno = std::map<int, QList<CorrectionLog::Entry>>;
    // The entries the table says were written, by year, in the order of the rows.
    std::optional<PorAno> esperadas();
    void entradasDe(const clsEstornos& row, const clsMovimento& mov, PorAno& out);
    // The operator named apart in the act, when an administrator allowed it.
    QString operadorDoAto(CorrectionLog::Kind kind, qint32 idEstorno);
    QList<CorrectionLog::Entry> faltantes(int year, const QList<CorrectionLog::Entry>& entries);

    AppContext& m_ctx;
    CorrectionLog m_log;
};
