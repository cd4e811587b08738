#pragma once

#include "BankExport.h"

#include <QDateTime>
#include <QList>

class AppContext;
class clsGeraFebraban;
class clsRecebimentos;

// The Febraban 150 file of one movement and kind of guide: header "A", one "G" per confirmed
// receipt (EXPORT 0) and footer "Z". Folder [Export] caminho_febraban, bank name
// [Export] nome_banco, bank code typed by the operator.
class FebrabanExport {
public:
    static BankExport::Result gerar(AppContext& ctx, const BankExport::Request& rq);

    // "Feb" + "CX" + station + the kind's first four characters + "_" + bank + "_" +
    // "yyyyMMddHHmm" + ".RET".
    static QString nomeArquivo(const QString& estacao, const QString& descricao,
                               const QString& codBanco, const QDateTime& agora);
    // The station code of the file name: the counter's [Export] guiche, letters and digits only.
    static QString estacao(const AppContext& ctx);

private:
    static void monta(AppContext& ctx, const BankExport::Request& rq,
                      const QList<clsRecebimentos>& rows, clsGeraFebraban& g, QByteArray& out,
                      BankExport::Result& r);
};
