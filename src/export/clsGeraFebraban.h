#pragma once

#include <QString>

// The records of the Febraban 150 collection file: header "A", one content "G" per receipt and
// footer "Z". Properties are set already formatted to their width; a builder keeps its record
// and answers true only when it has exactly 150 characters.
class clsGeraFebraban {
public:
    enum class Registro { Header, Content, Footer };
    static constexpr int kTamanho = 150;

    QString NOME_BANCO;  // 20
    QString COD_BANCO;   // 3
    QString CONT_ARQ;    // 6
    QString DATA_ARQ;    // 8, AAAAMMDD
    QString VALOR_ARREC; // 12, cents
    QString DATA_PAGTO;  // 8, AAAAMMDD
    QString NSR;         // 8
    QString QUANT_REG;   // 6
    QString VALOR_TOTAL; // 17, cents
    QString COD_BARRA;   // 44

    bool Gera_header();
    bool Gera_content();
    bool Gera_footer();

    const QString& resultado(Registro r) const { return m_result[int(r)]; }
    static QString mensagemErro(Registro r);

private:
    QString m_result[3];
};
