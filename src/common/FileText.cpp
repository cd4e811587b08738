#include "FileText.h"

int FileText::width(Field field) {
    switch (field) {
    case Field::DescricaoLancamento:
        return 170; // the debit header's 171 positions take at most 170 characters
    case Field::NumeroDocumento:
        return 29; // the debit item's 30 positions take at most 29
    case Field::Motivo:
        return 200;
    case Field::NomeOperador:
        return 50;
    case Field::Observacao:
        return 100;
    case Field::DescricaoTipo:
        return 60;
    case Field::Opcao:
        return 254; // what Config.ini keeps of a value
    }
    return 0;
}

QString FileText::label(Field field) {
    switch (field) {
    case Field::DescricaoLancamento:
        return QStringLiteral("A descrição");
    case Field::NumeroDocumento:
        return QStringLiteral("O número do documento");
    case Field::Motivo:
        return QStringLiteral("O motivo");
    case Field::NomeOperador:
        return QStringLiteral("O nome");
    case Field::Observacao:
        return QStringLiteral("A observação");
    case Field::DescricaoTipo:
        return QStringLiteral("A descrição");
    case Field::Opcao:
        return QStringLiteral("O texto");
    }
    return {};
}

QString FileText::problem(const QString& text, Field field) {
    return problem(text, width(field), label(field));
}

QString FileText::problem(const QString& text, int width, const QString& label) {
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x20 || u == 0x7F || (u >= 0x80 && u < 0xA0))
            return QStringLiteral("%1 não pode ter quebra de linha, tabulação nem outro caractere "
                                  "de controle.")
                .arg(label);
        if (u > 0xFF)
            return QStringLiteral("%1 tem o caractere \"%2\", que os arquivos do caixa não "
                                  "gravam (use letras, números e acentos comuns).")
                .arg(label, QString(c));
    }
    if (text.size() > width)
        return QStringLiteral("%1 tem %2 caracteres; cabem no máximo %3.")
            .arg(label)
            .arg(text.size())
            .arg(width);
    return {};
}
