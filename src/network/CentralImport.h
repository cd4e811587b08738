#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class CentralLink;
class ErrorLog;

// Loads the codes of an earlier year into the central's RECEBIMENTOS1, so that the counters
// refuse them too: from a caixa.db of this program (its Recebimentos) or from a text or CSV
// file with one code per line (the first field of the line). Codes go in batches, each batch
// in one central transaction together with where the import stands, so an import cut short
// (even by kill -9) resumes after its last batch and nothing is counted or written twice. A
// code already in the central is left as it is; a line that is not 44 digits is skipped and
// counted; codes starting "000" are never refused, so they are skipped too.
class CentralImport {
public:
    struct Resultado {
        bool ok = false;
        QString erro;
        qint64 lidos = 0;              // codes and lines read, in this import as a whole
        qint64 importados = 0;         // now in the central
        qint64 jaExistentes = 0;       // the central had them already
        qint64 invalidos = 0;          // not 44 digits
        qint64 ignorados = 0;          // codes starting "000" (items without a document)
        bool retomada = false;         // it continued an import cut short
        QStringList exemplosInvalidos; // the first few, as read
    };
    // Called after each batch: how far it is, out of how much (bytes or receipts).
    using Progresso = std::function<void(qint64 feito, qint64 total)>;

    // `link` must be connected. `log` receives the failures of reading an earlier caixa.db.
    static Resultado importar(CentralLink& link, ErrorLog& log, const QString& caminho,
                              const Progresso& progresso, int lote = kLote);

    static constexpr int kLote = 10000;
    static constexpr int kExemplos = 5;
};
