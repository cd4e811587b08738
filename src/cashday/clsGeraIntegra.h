#pragma once

#include <QString>
#include <span>

// The records of the integration file, 200 characters each. A plain builder: the caller sets
// every field already formatted to its width (campo() formats a value by the layout), and each
// Cria_* concatenates its record's fields in layout order and answers whether the record came
// out exactly 200 characters long. The builders never pad or cut, so a field of the wrong width
// shows as a record of the wrong length.
class clsGeraIntegra {
public:
    static constexpr int kTamanho = 200;

    enum class Registro { Header, Content, DebitoHeader, DebitoContent, Footer };

    // How a value is brought to its field's width. Nothing is ever cut.
    enum class Fill {
        Zeros,  // numbers: right-aligned, zero-filled
        Spaces, // texts: left-aligned, space-filled
        AsIs,   // written as given
        Fixed,  // no property: `fixed` repeated over the width
    };

    struct Field {
        int pos; // from 1
        int width;
        QString clsGeraIntegra::*value;
        Fill fill;
        char fixed;
    };

    QString D_VALORTOTAL;
    QString D_ID;
    QString D_DESCRICAO;
    QString D_ESPECIE;
    QString D_VALOR;
    QString D_NUMERO;
    QString D_REG;
    QString NSA;
    QString CONFCAIXA;
    QString cont;
    QString TOTAL;
    QString BANCO;
    QString REG;
    QString RECURSO; // kept, written by no record
    QString GUICHE;
    QString SETOR;
    QString DATA_RECEBIMENTO;
    QString DATA_CREDITO;
    QString SAIDA;
    QString ENTRADA;
    QString DIFERENCA;
    QString BARRA;
    QString AUTENTICA;
    QString ESPECIE;
    QString MSG;
    QString TIPO;
    QString IDENTIFICA;
    QString EXPORT;

    const QString& HEADER() const { return m_header; }
    const QString& CONTENT() const { return m_content; }
    const QString& FOOTER() const { return m_footer; }
    const QString& DEBITO_HEADER() const { return m_debitoHeader; }
    const QString& DEBITO_CONTENT() const { return m_debitoContent; }

    bool Cria_header();
    bool Cria_header_debito();
    bool Cria_content_debito();
    bool Cria_footer();
    bool Cria_content();

    static std::span<const Field> layout(Registro r);
    // The width of `value`'s field in record `r`; 0 when the record has no such field.
    static int largura(Registro r, QString clsGeraIntegra::*value);
    // `text` brought to the width of `value`'s field in record `r` by the field's fill.
    static QString campo(Registro r, QString clsGeraIntegra::*value, const QString& text);
    // The name a failing record is reported by: "Header", "CONTENT", "HEADER_DEBITO",
    // "CONTENT_DEBITO", "FOOTER".
    static QString nome(Registro r);

private:
    bool build(Registro r, QString& out) const;

    QString m_header;
    QString m_content;
    QString m_footer;
    QString m_debitoHeader;
    QString m_debitoContent;
};
