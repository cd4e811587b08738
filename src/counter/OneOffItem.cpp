#include "OneOffItem.h"

#include "DateUtil.h"

const QString OneOffItem::kErroSoma = QStringLiteral(" - Erro na Soma Avulso!!");

QString OneOffItem::erroSoma(const QString& entry) {
    return entry + kErroSoma;
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
    const auto valor = Money::parse(parts[1]);
    if (!valor) {
        if (error)
            *error = erroSoma(parts[1]);
        return false;
    }
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
    return true;
}
