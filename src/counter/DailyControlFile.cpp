#include "DailyControlFile.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "PaymentRecorder.h"
#include "TextFile.h"
#include "clsMovimento.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

bool DailyControlFile::append(const QString& path, const QStringList& lines) {
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    return TextFile::append(path, lines);
}

bool DailyControlFile::writeHeader(const AppContext& ctx, const clsMovimento& mov) {
    const QString p = path(ctx, mov.MDATA);
    if (QFile::exists(p))
        return true;
    return append(p, {QStringLiteral("CONTROLE DE RECEBIMENTO DIÁRIO - ") + DateUtil::br(mov.MDATA),
                      QStringLiteral("MOVIMENTO: ") +
                          QStringLiteral("%1").arg(mov.MOV, 4, 10, QLatin1Char('0')),
                      QStringLiteral("CAIXA: ") + ctx.settings.guiche +
                          QStringLiteral("   OPERADOR: ") + ctx.userName,
                      QString(79, QLatin1Char('-'))});
}

QString DailyControlFile::receiptLine(const RecordedReceipt& r, const QString& hora) {
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(r.autentica, 4, 10, QLatin1Char('0'))
        .arg(hora)
        .arg(r.item.kindColumn().left(28).leftJustified(28, QLatin1Char(' ')))
        .arg(r.item.valor.format().rightJustified(14, QLatin1Char(' ')))
        .arg(r.item.codbarra);
}

bool DailyControlFile::appendReceipts(const AppContext& ctx, const QDate& day,
                                      const QList<RecordedReceipt>& rows) {
    const QString hora = ctx.clock.now().toString(QStringLiteral("hh:mm:ss"));
    QStringList lines;
    for (const RecordedReceipt& r : rows)
        lines << receiptLine(r, hora);
    return append(path(ctx, day), lines);
}
