#include "OneOffItem.h"

#include "DateUtil.h"
#include "clsDataAccess.h"

QList<QPair<int, QString>> OneOffItem::kinds(clsDataAccess& db) {
    QList<QPair<int, QString>> out;
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT IDCOD, DESCRICAO FROM CodBarra WHERE IDCOD < 100 AND PADRAO <> 'C' "
                       "AND PADRAO <> 'F' ORDER BY DESCRICAO"));
    if (!rs)
        return out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({int(r.integer(QStringLiteral("IDCOD"))), r.text(QStringLiteral("DESCRICAO"))});
    return out;
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
    out.valor = parts[1];
    if (parts.size() > 2 && !parts[2].isEmpty()) {
        const auto d = DateUtil::parseBr(parts[2]);
        if (!d) {
            if (error)
                *error =
                    QStringLiteral("Data inválida no avulso: %1 (use DD/MM/AAAA).").arg(parts[2]);
            return false;
        }
        out.vencimento = d->toString(QStringLiteral("yyyyMMdd"));
    }
    out.parcela = parts.value(3);
    out.obs = parts.mid(4).join(QLatin1Char(':'));
    return true;
}
