#include "OneOffItem.h"

#include "DateUtil.h"
#include "FileText.h"
#include "SystemTexts.h"

QString OneOffItem::erroSoma(const QString& entry) {
    return SystemTexts::text(SystemText::ErroSomaAvulso).arg(entry);
}

std::optional<Money> OneOffItem::valorDigitado(const QString& text, QString* why) {
    QString sub;
    const auto v = Money::parseTyped(text, &sub);
    if (!v && why)
        *why = Money::parse(text) ? sub : erroSoma(text);
    return v;
}

QString OneOffItem::textoProblema(const QString& parcela, const QString& obs) {
    if (QString why = FileText::problem(parcela, FileText::Field::Observacao); !why.isEmpty())
        return QStringLiteral("Parcela: ") + why;
    return FileText::problem(obs, FileText::Field::Observacao);
}

bool OneOffItem::fromArgument(const QString& text, OneOffItem& out, QString* error) {
    const QStringList parts = text.split(QLatin1Char(':'));
    bool ok = false;
    out.idcod = parts.value(0).toInt(&ok);
    if (!ok || parts.size() < 2) {
        if (error)
            *error = QStringLiteral(
                         "Avulso inválido: \"%1\" (use IDCOD:VALOR[:DD/MM/AAAA[:PARCELA[:OBS]]]).")
                         .arg(text);
        return false;
    }
    const auto valor = valorDigitado(parts[1], error);
    if (!valor)
        return false;
    out.valor = *valor;
    if (parts.size() > 2 && !parts[2].isEmpty()) {
        const auto d = DateUtil::parseBr(parts[2]);
        if (!d) {
            if (error)
                *error =
                    QStringLiteral("Data inválida no avulso: %1 (use DD/MM/AAAA).").arg(parts[2]);
            return false;
        }
        out.vencimento = *d;
    }
    out.parcela = parts.value(3);
    out.obs = parts.mid(4).join(QLatin1Char(':'));
    if (const QString why = textoProblema(out.parcela, out.obs); !why.isEmpty()) {
        if (error)
            *error = why;
        return false;
    }
    return true;
}
