#pragma once

#include <QDateTime>
#include <QString>

// The line builder of the authenticating printer: the caller sets the (already formatted)
// values, a composer builds one line or block and answers whether it has its width.
class clsAutenticadora {
public:
    static constexpr int kWidth = 40;

    QString MENSAGEM; // the 3-character header
    QString USUARIO;
    QString GUICHE; // the one-letter counter identifier
    QString VALOR_DOC;
    QString NOME_GUIA;
    QString VALOR_RECEBIDO;
    QString VALOR_ENTRADA;
    QString VALOR_SAIDA;
    QString VALOR_TOTAL;
    QString DATA_PAGTO;
    QString SEQ_REG;
    QString SEQ_MOV;

    // Results.
    QString BOLETO;
    QString FITA;
    QString AbreFita;
    QString EncerraFita;
    QString caracter;
    QString Cabecalho;
    QString Reabertura;
    QString Operacao;
    QString Correcao;

    bool AutenticaBoleto();                     // BOLETO, at least 36 characters
    bool AutenticaFita();                       // FITA, at least 40
    bool ReplicaCaracter(QChar c);              // caracter: 40 copies
    bool AbreCaixa(int kind);                   // AbreFita, exactly 40
    bool EncerraCaixa(const QString& kind);     // EncerraFita, exactly 40; unknown kind: unchanged
    bool EncerraCaixaCompleto();                // EncerraFita, exactly 245
    bool AbreCaixaCompleto();                   // AbreFita, the four lines of the opening block
    bool PrintCabecalho(const QDateTime& when); // "DATA/HORA: dd/MM/yyyy hh:mm:ss"
    bool ReabreCaixa();                         // "=        REABRINDO MOVIMENTO: nnn      ="
    bool OperacaoCaixa(); // description and amount of one cash operation, 40 wide
    // Correcao, each at most 40 wide: the callers give SEQ_REG, and VALOR_DOC or NOME_GUIA.
    bool EstornoItem(); // "(-)  ESTORNO ITEM: " SEQ_REG " ---> " VALOR_DOC
    bool AlteraValor(); // "(*) ALT. ITEM: " SEQ_REG " NOVO VALOR: " VALOR_DOC
    bool AlteraTipo();  // "(*) ALT. ITEM: " SEQ_REG " NOVO TIPO: " NOME_GUIA
    bool ReverteItem(); // "(+)  REVERTE ITEM: " SEQ_REG " ---> " VALOR_DOC

    // Formatting helpers the callers use to reach the widths.
    static QString pad(const QString& s, int width);   // cut or filled on the right
    static QString right(const QString& s, int width); // aligned to the right
};
