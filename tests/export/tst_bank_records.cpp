// The record builders of the bank files, read back position by position by the tests' own
// layout tables, and every property of the wrong width failing exactly the records that use it.
#include "BankFileReader.h"
#include "clsGeraCnab.h"
#include "clsGeraFebraban.h"

#include <QTest>

namespace {

using BR = BankFileReader;

BR::Cnab cnabValues() {
    return {QStringLiteral("341"),
            QStringLiteral("12345678000199"),
            QStringLiteral("01234"),
            QStringLiteral("5"),
            QStringLiteral("778899"),
            QStringLiteral("PREFEITURA MUNICIPAL DE TESTE "),
            QStringLiteral("BANCO DO TESTE S.A.           "),
            QStringLiteral("23112026"),
            QStringLiteral("101530"),
            QStringLiteral("000042")};
}

BR::Boleto slipValues() {
    return {QStringLiteral("24"),
            QStringLiteral("111333555555555"),
            QStringLiteral("05122026"),
            QStringLiteral("000000000008915"),
            QStringLiteral("000000000000123"),
            QStringLiteral("000000000009038")};
}

clsGeraCnab filledCnab() {
    const BR::Cnab c = cnabValues();
    const BR::Boleto t = slipValues();
    clsGeraCnab g;
    g.COD_BANCO = c.banco;
    g.NUM_INSC_EMP = c.cnpj;
    g.AGENCIA = c.agencia;
    g.DIG_AGENCIA = c.dv;
    g.CONVENIO = c.convenio;
    g.NOME_EMP = c.empresa;
    g.NOME_BANCO = c.nomeBanco;
    g.DATA_ARQUIVO = c.data;
    g.HORA_ARQUIVO = c.hora;
    g.NSARQUIVO = c.nsa;
    g.NSREGISTRO = QStringLiteral("00007");
    g.MODAL_NOSSO_NUM = t.modal;
    g.IDENT_TITULO_BANCO = t.nosso;
    g.DATA_VENC_TITULO = t.vencimento;
    g.VALOR_TITULO = t.valorTitulo;
    g.JUROS_MULTA = t.juros;
    g.VALOR_PAGO_SACADO = t.pago;
    g.VALOR_LIQUIDO = t.pago;
    g.QUANT_REG_LOTE = QStringLiteral("000012");
    g.QUANT_REG_ARQ = QStringLiteral("000014");
    return g;
}

clsGeraFebraban filledFebraban() {
    clsGeraFebraban g;
    g.COD_BANCO = QStringLiteral("001");
    g.NOME_BANCO = QStringLiteral("BANCO DO TESTE      ");
    g.DATA_ARQ = QStringLiteral("20261123");
    g.CONT_ARQ = QStringLiteral("261123");
    g.DATA_PAGTO = QStringLiteral("20261123");
    g.COD_BARRA = QStringLiteral("81660000003124004262026113058888888888888888");
    g.VALOR_ARREC = QStringLiteral("000000031240");
    g.NSR = QStringLiteral("00000003");
    g.QUANT_REG = QStringLiteral("000005");
    g.VALOR_TOTAL = QStringLiteral("00000000000093720");
    return g;
}

// Which builders answer true, as a six-letter mask in the order of the records.
QString cnabMask(clsGeraCnab g) {
    QString m;
    for (bool ok : {g.Header_arquivo(), g.Header_lote(), g.Detalhe_t(), g.Detalhe_u(),
                    g.Cria_trailer_lote(), g.Cria_trailer_arquivo()})
        m += ok ? QLatin1Char('1') : QLatin1Char('0');
    return m;
}

// Each property and the records that carry it (the mask of cnabMask).
struct CnabWidth {
    const char* name;
    QString clsGeraCnab::*field;
    const char* mask;
};
const CnabWidth kCnabWidths[] = {{"COD_BANCO", &clsGeraCnab::COD_BANCO, "000000"},
                                 {"NUM_INSC_EMP", &clsGeraCnab::NUM_INSC_EMP, "001111"},
                                 {"AGENCIA", &clsGeraCnab::AGENCIA, "000111"},
                                 {"DIG_AGENCIA", &clsGeraCnab::DIG_AGENCIA, "001111"},
                                 {"CONVENIO", &clsGeraCnab::CONVENIO, "000111"},
                                 {"NOME_EMP", &clsGeraCnab::NOME_EMP, "001111"},
                                 {"NOME_BANCO", &clsGeraCnab::NOME_BANCO, "011111"},
                                 {"DATA_ARQUIVO", &clsGeraCnab::DATA_ARQUIVO, "001011"},
                                 {"HORA_ARQUIVO", &clsGeraCnab::HORA_ARQUIVO, "011111"},
                                 {"NSARQUIVO", &clsGeraCnab::NSARQUIVO, "001111"},
                                 {"NSREGISTRO", &clsGeraCnab::NSREGISTRO, "110011"},
                                 {"MODAL_NOSSO_NUM", &clsGeraCnab::MODAL_NOSSO_NUM, "110111"},
                                 {"IDENT_TITULO_BANCO", &clsGeraCnab::IDENT_TITULO_BANCO, "110111"},
                                 {"DATA_VENC_TITULO", &clsGeraCnab::DATA_VENC_TITULO, "110111"},
                                 {"VALOR_TITULO", &clsGeraCnab::VALOR_TITULO, "110111"},
                                 {"JUROS_MULTA", &clsGeraCnab::JUROS_MULTA, "111011"},
                                 {"VALOR_PAGO_SACADO", &clsGeraCnab::VALOR_PAGO_SACADO, "111011"},
                                 {"VALOR_LIQUIDO", &clsGeraCnab::VALOR_LIQUIDO, "111011"},
                                 {"QUANT_REG_LOTE", &clsGeraCnab::QUANT_REG_LOTE, "111101"},
                                 {"QUANT_REG_ARQ", &clsGeraCnab::QUANT_REG_ARQ, "111110"}};

QString febMask(clsGeraFebraban g) {
    QString m;
    for (bool ok : {g.Gera_header(), g.Gera_content(), g.Gera_footer()})
        m += ok ? QLatin1Char('1') : QLatin1Char('0');
    return m;
}

} // namespace

class tst_bank_records : public QObject {
    Q_OBJECT
private slots:
    void cnabRecordsReadBackByPosition() {
        clsGeraCnab g = filledCnab();
        QVERIFY(g.Header_arquivo());
        QVERIFY(g.Header_lote());
        QVERIFY(g.Detalhe_t());
        QVERIFY(g.Detalhe_u());
        QVERIFY(g.Cria_trailer_lote());
        QVERIFY(g.Cria_trailer_arquivo());
        using R = clsGeraCnab::Registro;
        const BR::Cnab c = cnabValues();
        const BR::Boleto t = slipValues();
        QCOMPARE(BR::differences(g.resultado(R::HeaderArquivo), BR::cnabHeaderArquivo(c), 240),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::HeaderLote), BR::cnabHeaderLote(c), 240),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::DetalheT), BR::cnabSegmentoT(c, 7, t), 240),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::DetalheU), BR::cnabSegmentoU(c, 7, t), 240),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::TrailerLote), BR::cnabTrailerLote(c, 12), 240),
                 QString());
        QCOMPARE(
            BR::differences(g.resultado(R::TrailerArquivo), BR::cnabTrailerArquivo(c, 14), 240),
            QString());
    }

    void febrabanRecordsReadBackByPosition() {
        clsGeraFebraban g = filledFebraban();
        QVERIFY(g.Gera_header());
        QVERIFY(g.Gera_content());
        QVERIFY(g.Gera_footer());
        using R = clsGeraFebraban::Registro;
        QCOMPARE(BR::differences(
                     g.resultado(R::Header),
                     BR::febHeader({QStringLiteral("001"), QStringLiteral("BANCO DO TESTE      "),
                                    QStringLiteral("20261123"), QStringLiteral("261123")}),
                     150),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::Content),
                                 BR::febDetalhe(QStringLiteral("20261123"), g.COD_BARRA,
                                                QStringLiteral("000000031240"), 3),
                                 150),
                 QString());
        QCOMPARE(BR::differences(g.resultado(R::Footer),
                                 BR::febTrailer(5, QStringLiteral("00000000000093720")), 150),
                 QString());
    }

    // A property one character short or long fails every record that carries it and no other.
    void cnabWrongWidth_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("delta");
        for (int i = 0; i < int(std::size(kCnabWidths)); ++i)
            for (int delta : {-1, 1})
                QTest::newRow(QByteArray(kCnabWidths[i].name) + (delta < 0 ? " short" : " long"))
                    << i << delta;
    }
    void cnabWrongWidth() {
        QFETCH(int, index);
        QFETCH(int, delta);
        clsGeraCnab g = filledCnab();
        QCOMPARE(cnabMask(g), QStringLiteral("111111"));
        QString& value = g.*kCnabWidths[index].field;
        if (delta < 0)
            value.chop(1);
        else
            value.append(QLatin1Char('0'));
        QCOMPARE(cnabMask(g), QLatin1String(kCnabWidths[index].mask));
    }

    void febrabanWrongWidth_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("mask");
        const char* masks[] = {"011", "011", "011", "011", "101",
                               "101", "101", "110", "110", "101"};
        for (int i = 0; i < 10; ++i)
            QTest::newRow(QByteArray::number(i)) << i << QString::fromLatin1(masks[i]);
    }
    void febrabanWrongWidth() {
        QFETCH(int, index);
        QFETCH(QString, mask);
        clsGeraFebraban g = filledFebraban();
        QCOMPARE(febMask(g), QStringLiteral("111"));
        QString* props[] = {&g.NOME_BANCO,  &g.COD_BANCO,  &g.CONT_ARQ, &g.DATA_ARQ,
                            &g.VALOR_ARREC, &g.DATA_PAGTO, &g.NSR,      &g.QUANT_REG,
                            &g.VALOR_TOTAL, &g.COD_BARRA};
        props[index]->chop(1);
        QCOMPARE(febMask(g), mask);
        props[index]->append(QStringLiteral("00"));
        QCOMPARE(febMask(g), mask);
    }

    // One field too long and another too short keep the length but shift the fields: refused.
    void compensatingWidthsAreRefused() {
        clsGeraCnab g = filledCnab();
        g.NOME_EMP.append(QLatin1Char(' '));
        g.NOME_BANCO.chop(1);
        QVERIFY(!g.Header_arquivo());
        QCOMPARE(g.resultado(clsGeraCnab::Registro::HeaderArquivo).size(), 240);
        clsGeraFebraban f = filledFebraban();
        f.DATA_PAGTO = QStringLiteral("2026112");
        f.COD_BARRA.append(QLatin1Char('8'));
        QVERIFY(!f.Gera_content());
    }
};

QTEST_MAIN(tst_bank_records)
#include "tst_bank_records.moc"
