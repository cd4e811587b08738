#include "FileText.h"

#include "SystemTexts.h"

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
            return SystemTexts::text(SystemText::TextoComControle).arg(label);
        if (u > 0xFF)
            return SystemTexts::text(SystemText::TextoCaractereFora).arg(label, QString(c));
    }
    if (text.size() > width)
        return SystemTexts::text(SystemText::TextoLongo)
            .arg(label, QString::number(text.size()), QString::number(width));
    return {};
}
