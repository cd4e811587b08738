#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// An independent reading of the bank files: position tables of its own, written from the
// CNAB 240 return layout and the Febraban 150 collection layout, each with the value every
// field must hold. The tests compare what the program wrote against these.
class BankFileReader {
public:
    struct Field {
        int from; // 1-based, inclusive
        int to;
        QString value;
    };

    // Empty when the record has `length` characters, the fields cover it from 1 to `length`
    // and every field holds its value; otherwise each difference, named by its positions.
    static QString differences(const QString& record, const QList<Field>& fields, int length);

    // The file as records: ISO-8859-1 text whose every line ends with CR LF (a bare LF, or a
    // last line without its end, makes the answer empty).
    static QStringList records(const QString& path);

    // Values as they must appear in the CNAB file, already at their widths.
    struct Cnab {
        QString banco;     // 3
        QString cnpj;      // 14
        QString agencia;   // 5
        QString dv;        // 1
        QString convenio;  // 6
        QString empresa;   // 30
        QString nomeBanco; // 30
        QString data;      // 8, DDMMAAAA
        QString hora;      // 6
        QString nsa;       // 6
    };
    struct Boleto {
        QString modal;       // 2
        QString nosso;       // 15
        QString vencimento;  // 8
        QString valorTitulo; // 15
        QString juros;       // 15
        QString pago;        // 15
    };
    static QList<Field> cnabHeaderArquivo(const Cnab& c);
    static QList<Field> cnabHeaderLote(const Cnab& c);
    static QList<Field> cnabSegmentoT(const Cnab& c, int registro, const Boleto& b);
    static QList<Field> cnabSegmentoU(const Cnab& c, int registro, const Boleto& b);
    static QList<Field> cnabTrailerLote(const Cnab& c, int registrosLote);
    static QList<Field> cnabTrailerArquivo(const Cnab& c, int registrosArquivo);

    struct Febraban {
        QString banco;     // 3
        QString nomeBanco; // 20
        QString data;      // 8, AAAAMMDD
        QString sequencia; // 6
    };
    static QList<Field> febHeader(const Febraban& f);
    static QList<Field> febDetalhe(const QString& dataPagto, const QString& codigo,
                                   const QString& valor12, int registro);
    static QList<Field> febTrailer(int registros, const QString& total17);
};
