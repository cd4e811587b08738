#include "clsAutenticadora.h"

QString clsAutenticadora::pad(const QString& s, int width) {
    return s.left(width).leftJustified(width, QLatin1Char(' '));
}

QString clsAutenticadora::right(const QString& s, int width) {
    return s.right(width).rightJustified(width, QLatin1Char(' '));
}

bool clsAutenticadora::AutenticaBoleto() {
    BOLETO = MENSAGEM + QLatin1Char(' ') + GUICHE + QLatin1Char(' ') + SEQ_REG + QLatin1Char(' ') +
             DATA_PAGTO + QStringLiteral("  ") + VALOR_DOC + QLatin1Char('R');
    return BOLETO.size() >= 36;
}

bool clsAutenticadora::AutenticaFita() {
    FITA = SEQ_REG + QLatin1Char(' ') + DATA_PAGTO + QLatin1Char(' ') + NOME_GUIA +
           QStringLiteral("  ") + VALOR_TOTAL;
    return FITA.size() >= 40;
}

bool clsAutenticadora::ReplicaCaracter(QChar c) {
    caracter = QString(kWidth, c);
    return true;
}

bool clsAutenticadora::AbreCaixa(int kind) {
    if (kind == 1)
        AbreFita = QStringLiteral("=") + QString(6, QLatin1Char(' ')) +
                   QStringLiteral("ABERTURA DE MOVIMENTO: ") + SEQ_MOV + QStringLiteral("      =");
    else if (kind == 2)
        AbreFita = QStringLiteral("=") + QString(14, QLatin1Char(' ')) +
                   QStringLiteral("GUICHE:  ") + GUICHE + QStringLiteral("              =");
    return AbreFita.size() == kWidth;
}

bool clsAutenticadora::EncerraCaixa(const QString& kind) {
    if (kind == QLatin1String("ARRECADADO"))
        EncerraFita = QStringLiteral("(+)========== ARRECADADO --> ") + VALOR_RECEBIDO;
    else if (kind == QLatin1String("ENTRADA"))
        EncerraFita = QStringLiteral("(+)========== ENTRADAS   --> ") + VALOR_ENTRADA;
    else if (kind == QLatin1String("SAIDA"))
        EncerraFita = QStringLiteral("(-)========== RETIRADAS  --> ") + VALOR_SAIDA;
    else if (kind == QLatin1String("TOTAL"))
        EncerraFita = QStringLiteral("(=)========== TOTAL/DIA  --> ") + VALOR_TOTAL;
    return EncerraFita.size() == kWidth;
}

bool clsAutenticadora::EncerraCaixaCompleto() {
    const QChar lf(QLatin1Char('\n'));
    EncerraFita = QString(kWidth, QLatin1Char('-')) + lf +
                  QStringLiteral("(+)========= ARRECADADO --> ") + VALOR_RECEBIDO + lf +
                  QStringLiteral("(+)========= ENTRADAS   --> ") + VALOR_ENTRADA + lf +
                  QStringLiteral("(-)========= RETIRADAS  --> ") + VALOR_SAIDA + lf +
                  QStringLiteral("                     -------------------") + lf +
                  QStringLiteral("(=)========= TOTAL/DIA  --> ") + VALOR_TOTAL;
    return EncerraFita.size() == 245;
}

bool clsAutenticadora::AbreCaixaCompleto() {
    const bool first = AbreCaixa(1);
    const QString line1 = AbreFita;
    const bool second = AbreCaixa(2);
    const QString rule(kWidth, QLatin1Char('='));
    AbreFita =
        rule + QLatin1Char('\n') + line1 + QLatin1Char('\n') + AbreFita + QLatin1Char('\n') + rule;
    return first && second && AbreFita.size() == 4 * kWidth + 3;
}

bool clsAutenticadora::PrintCabecalho(const QDateTime& when) {
    Cabecalho =
        QStringLiteral("DATA/HORA: ") + when.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"));
    return Cabecalho.size() <= kWidth;
}

bool clsAutenticadora::ReabreCaixa() {
    Reabertura =
        QStringLiteral("=        REABRINDO MOVIMENTO: ") + SEQ_MOV + QStringLiteral("      =");
    return Reabertura.size() == kWidth;
}

bool clsAutenticadora::OperacaoCaixa() {
    Operacao = pad(NOME_GUIA, kWidth - 14) + right(VALOR_TOTAL, 14);
    return NOME_GUIA.size() <= kWidth - 14 && VALOR_TOTAL.size() <= 14;
}

bool clsAutenticadora::EstornoItem() {
    Correcao =
        QStringLiteral("(-)  ESTORNO ITEM: ") + SEQ_REG + QStringLiteral(" ---> ") + VALOR_DOC;
    return Correcao.size() <= kWidth;
}

bool clsAutenticadora::AlteraValor() {
    Correcao =
        QStringLiteral("(*) ALT. ITEM: ") + SEQ_REG + QStringLiteral(" NOVO VALOR: ") + VALOR_DOC;
    return Correcao.size() <= kWidth;
}

bool clsAutenticadora::AlteraTipo() {
    Correcao =
        QStringLiteral("(*) ALT. ITEM: ") + SEQ_REG + QStringLiteral(" NOVO TIPO: ") + NOME_GUIA;
    return Correcao.size() <= kWidth;
}

bool clsAutenticadora::ReverteItem() {
    Correcao =
        QStringLiteral("(+)  REVERTE ITEM: ") + SEQ_REG + QStringLiteral(" ---> ") + VALOR_DOC;
    return Correcao.size() <= kWidth;
}
