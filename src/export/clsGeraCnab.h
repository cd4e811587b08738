#pragma once

#include <QString>

// The records of the CNAB 240 return file: one string property per field value, already
// formatted to its width, and one builder per record kind. A builder keeps its record as the
// result of its kind and answers true only when the record has exactly 240 characters.
class clsGeraCnab {
public:
    enum class Registro {
        HeaderArquivo,
        HeaderLote,
        DetalheT,
        DetalheU,
        TrailerLote,
        TrailerArquivo
    };
    static constexpr int kTamanho = 240;

    QString AGENCIA;            // 5
    QString COD_BANCO;          // 3
    QString CONVENIO;           // 6
    QString DATA_ARQUIVO;       // 8, DDMMAAAA
    QString DATA_VENC_TITULO;   // 8, DDMMAAAA
    QString DIG_AGENCIA;        // 1
    QString HORA_ARQUIVO;       // 6, HHMMSS
    QString IDENT_TITULO_BANCO; // 15, nosso número
    QString JUROS_MULTA;        // 15, cents
    QString MODAL_NOSSO_NUM;    // 2
    QString NOME_BANCO;         // 30
    QString NOME_EMP;           // 30
    QString NSARQUIVO;          // 6
    QString NSREGISTRO;         // 5
    QString NUM_INSC_EMP;       // 14, CNPJ
    QString QUANT_REG_ARQ;      // 6
    QString QUANT_REG_LOTE;     // 6
    QString VALOR_LIQUIDO;      // 15, cents
    QString VALOR_PAGO_SACADO;  // 15, cents
    QString VALOR_TITULO;       // 15, cents

    bool Header_arquivo();
    bool Header_lote();
    bool Detalhe_t();
    bool Detalhe_u();
    bool Cria_trailer_lote();
    bool Cria_trailer_arquivo();

    const QString& resultado(Registro r) const { return m_result[int(r)]; }
    // The operator's message when the record of this kind could not be built.
    static QString mensagemErro(Registro r);

private:
    QString m_result[6];
};
