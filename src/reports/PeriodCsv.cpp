#include "PeriodCsv.h"

#include "PeriodReport.h"

namespace {

QString amount(const Money& m) {
    return m.format().remove(QLatin1Char('.'));
}

// A text field: quoted when it holds the separator, a quote or a line end.
QString field(const QString& t) {
    if (!t.contains(QLatin1Char(';')) && !t.contains(QLatin1Char('"')) &&
        !t.contains(QLatin1Char('\n')) && !t.contains(QLatin1Char('\r')))
        return t;
    QString q = t;
    q.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + q + QLatin1Char('"');
}

} // namespace

QByteArray PeriodCsv::texto(const PeriodReport& p) {
    QStringList lines;
    lines << QStringLiteral("Data;Movimento;Tipo;Descricao;Quantidade;Valor dos documentos;"
                            "Juros e multa;Total");
    for (const PeriodReport::Day& d : p.dias)
        for (const ReceiptFigures::Kind& k : d.figuras.porTipo)
            lines << QStringList{d.data.toString(QStringLiteral("dd/MM/yyyy")),
                                 QString::number(d.mov),
                                 QString::number(k.idcod),
                                 field(k.descricao),
                                 QString::number(k.quantidade),
                                 amount(k.valorFace),
                                 amount(k.encargos),
                                 amount(k.total)}
                         .join(QLatin1Char(';'));
    QByteArray bytes("\xEF\xBB\xBF");
    bytes += lines.join(QStringLiteral("\r\n")).toUtf8();
    bytes += "\r\n";
    return bytes;
}
