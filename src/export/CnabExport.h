#pragma once

#include "BankExport.h"
#include "DueFactor.h"

#include <QDateTime>
#include <QList>

class AppContext;
class clsCodBarra;
class clsGeraCnab;
class clsRecebimentos;

// The CNAB 240 return file of one movement and kind of bank slip: header of file and of batch,
// segments T and U per confirmed receipt (EXPORT 0), trailers of batch and of file. Settings
// from Config.ini ([Export] Path3, cod_banco_cnab, nome_banco, cedente_agua / cedente_iptu,
// agencia, dv, cnpj; [Mensagem] pref), the file's sequence number from SequenciaArquivo.
class CnabExport {
public:
    static BankExport::Result gerar(AppContext& ctx, const BankExport::Request& rq);
    // NSREGISTRO has five digits and each receipt takes two of them (segments T and U).
    static constexpr int kMaximoRecebimentos = 49999;

    // "Cnab" + the kind's first four characters + "yyyyMMddHHmm" + ".RET".
    static QString nomeArquivo(const QString& descricao, const QDateTime& agora);
    // JUROS_MULTA: what the receipt took beyond the slip's face value (its interest and fine),
    // never negative.
    static Money jurosMulta(Money pago, Money valorTitulo);

private:
    struct Records {
        QByteArray head, body, tail;
    };
    // Every record of the run; a record that cannot be built is shown and counted in `r`.
    static void monta(AppContext& ctx, const BankExport::Request& rq,
                      const QList<clsRecebimentos>& rows, clsGeraCnab& g, Records& out,
                      BankExport::Result& r);
    static void preencheArquivo(const AppContext& ctx, const clsCodBarra& kind,
                                const QDate& movimento, const QDateTime& agora, clsGeraCnab& g);
    static void preencheRecebimento(const clsRecebimentos& row, const QDate& movimento,
                                    DueFactor::Rule rule, clsGeraCnab& g);
};
