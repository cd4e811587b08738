#include "DailyControlFile.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "DayMovement.h"
#include "TextFile.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
constexpr int kHeaderLines = 4;

bool couponOn(const AppContext& ctx) {
    return ctx.settings.imprimeCupom();
}

QString hourOf(const QDateTime& when) {
    return when.isValid() ? when.toString(QStringLiteral("hh:mm:ss")) : QStringLiteral("--:--:--");
}

// A file whose last line has no line end was cut while it was written.
bool torn(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    if (f.size() < 2)
        return true;
    f.seek(f.size() - 2);
    return f.read(2) != "\r\n";
}
} // namespace

QString DailyControlFile::path(const AppContext& ctx, const QDate& day) {
    QString folder = ctx.settings.Path3.trimmed();
    if (folder.isEmpty())
        folder = ctx.folder;
    else if (QDir::isRelativePath(QDir::fromNativeSeparators(folder)))
        folder = QDir(ctx.folder).filePath(QDir::fromNativeSeparators(folder));
    return QDir(QDir::fromNativeSeparators(folder))
        .filePath(QStringLiteral("Receb_") + day.toString(QStringLiteral("yyyyMMdd")) +
                  QStringLiteral(".txt"));
}

bool DailyControlFile::write(AppContext& ctx, const QString& path, const QStringList& lines,
                             bool whole) {
    QString error;
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        error = QStringLiteral("Não foi possível criar a pasta de %1").arg(path);
    else if (whole ? TextFile::writeAll(path, lines, &error)
                   : TextFile::append(path, lines, &error))
        return true;
    // The cause ("Disco cheio: ..." with the path) goes to the operator and to Log.ini.
    ctx.errors.report(QStringLiteral("Função Grava_Controle"),
                      {0, error, QStringLiteral("DailyControlFile")});
    return false;
}

QStringList DailyControlFile::header(const AppContext& ctx, const clsMovimento& mov) {
    return {QStringLiteral("CONTROLE DE RECEBIMENTO DIÁRIO - ") + DateUtil::br(mov.MDATA),
            QStringLiteral("MOVIMENTO: ") +
                QStringLiteral("%1").arg(mov.MOV, 4, 10, QLatin1Char('0')),
            QStringLiteral("CAIXA: ") + ctx.settings.guiche + QStringLiteral("   OPERADOR: ") +
                ctx.userName,
            QString(79, QLatin1Char('-'))};
}

QString DailyControlFile::receiptLine(int autentica, const QString& hora, const QString& kindColumn,
                                      Money valor, const QString& codbarra) {
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(autentica, 4, 10, QLatin1Char('0'))
        .arg(hora)
        .arg(kindColumn.left(28).leftJustified(28, QLatin1Char(' ')))
        .arg(valor.format().rightJustified(14, QLatin1Char(' ')))
        .arg(codbarra);
}

bool DailyControlFile::appendReceipts(AppContext& ctx, const QDate& day,
                                      const QList<Receipt>& rows) {
    if (!couponOn(ctx))
        return true;
    const QString p = path(ctx, day);
    if (!QFile::exists(p) || torn(p)) {
        const auto mov = DayMovement::of(ctx.db, day);
        return mov && rebuild(ctx, *mov);
    }
    QStringList lines;
    for (const Receipt& r : rows)
        lines << receiptLine(r.autentica, hourOf(r.momento), r.kindColumn, r.valor,
                             r.codbarra.isEmpty() ? clsRecebimentos::kSemCodigo : r.codbarra);
    return write(ctx, p, lines, false);
}

bool DailyControlFile::rebuild(AppContext& ctx, const clsMovimento& mov) {
    const QString p = path(ctx, mov.MDATA);
    const QStringList existing = TextFile::readLines(p);
    // The header stays as it was written when the day was opened (its operator), if it is whole.
    QStringList lines = header(ctx, mov);
    if (existing.size() >= kHeaderLines && existing.first() == lines.first() &&
        existing.at(1) == lines.at(1) && existing.at(kHeaderLines - 1) == lines.last())
        lines = existing.mid(0, kHeaderLines);
    if (couponOn(ctx)) {
        const auto receipts = clsRecebimentos::listarMovimento(ctx.db, mov.ID);
        if (!receipts)
            return false;
        for (const clsRecebimentos::ComTipo& row : *receipts)
            lines << receiptLine(
                row.r.AUTENTICA, hourOf(row.r.MOMENTO),
                QStringLiteral("%1-%2").arg(row.r.TIPO, 2, 10, QLatin1Char('0')).arg(row.descricao),
                row.r.VALOR, row.r.CODBARRA);
    }
    if (existing == lines && !torn(p))
        return true;
    return write(ctx, p, lines, true);
}
