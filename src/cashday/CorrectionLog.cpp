#include "CorrectionLog.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateUtil.h"
#include "OutputPath.h"
#include "TextFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

const QString CorrectionLog::kCabecalho = QStringLiteral("CONTROLE DE RECEBIMENTO DIÁRIO - ");
const QString CorrectionLog::kMotivoEstorno = QStringLiteral("Motivo do estorno: ");
const QString CorrectionLog::kMotivoAlteracao = QStringLiteral("Motivo da Alteração: ");
const QString CorrectionLog::kArquivoBanco = QStringLiteral("Arquivo do banco: ");
const QString CorrectionLog::kEstornoRevertido =
    QStringLiteral("Estorno revertido. Motivo do estorno: ");

namespace {
const QString kMovimento = QStringLiteral("Movimento: ");

QString number(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}

// One entry is one line per field: a reason typed with line breaks stays on its line.
QString oneLine(const QString& s) {
    return QString(s).replace(QRegularExpression(QStringLiteral("[\\r\\n]+")), QStringLiteral(" "));
}
} // namespace

CorrectionLog::CorrectionLog(const AppContext& ctx) : m_ctx(ctx) {}

QString CorrectionLog::folder() const {
    const QString set = QDir::fromNativeSeparators(m_ctx.settings.Path2.trimmed());
    if (set.isEmpty())
        return m_ctx.folder;
    return QDir::isRelativePath(set) ? QDir(m_ctx.folder).filePath(set) : set;
}

QString CorrectionLog::fileName(int year) const {
    return QStringLiteral("Estorno_%1_%2.txt").arg(m_ctx.settings.guiche.trimmed()).arg(year);
}

QString CorrectionLog::path(int year) const {
    return QDir(folder()).filePath(fileName(year));
}

QString CorrectionLog::currentPath() const {
    return path(m_ctx.clock.today().year());
}

bool CorrectionLog::podeGravar(QString* why) const {
    const QString dir = folder();
    const QString p = currentPath();
    bool ok = QDir().mkpath(dir);
    if (ok && (QFileInfo::exists(p) || QFileInfo(p).isSymLink())) {
        QFile f(p);
        ok = OutputPath::openForAppend(f);
    } else if (ok) {
        QTemporaryFile probe(QDir(dir).filePath(QStringLiteral(".Estorno_XXXXXX")));
        ok = probe.open();
    }
    if (!ok && why)
        *why = QDir::toNativeSeparators(p);
    return ok;
}

QStringList CorrectionLog::header() const {
    const QString rule(100, QLatin1Char('='));
    return {rule, kCabecalho + m_ctx.settings.cabecalho.trimmed(),
            QStringLiteral("CAIXA: ") + m_ctx.settings.guiche.trimmed(), rule};
}

QStringList CorrectionLog::lines(const Entry& e) {
    QStringList l{kMovimento + number(e.movimento), QStringLiteral("Data: ") + DateUtil::br(e.data),
                  QStringLiteral("User: ") + oneLine(e.usuario)};
    if (!e.operador.isEmpty())
        l << QStringLiteral("Operador: ") + oneLine(e.operador);
    l << QStringLiteral("Item: ") + number(e.autentica)
      << QStringLiteral("Tipo: ") + oneLine(e.tipo) << QStringLiteral("Valor: ") + e.valor.format();
    if (e.kind == Kind::Alteracao) {
        if (e.valorAnterior)
            l << QStringLiteral("Valor anterior: ") + e.valorAnterior->format();
        if (e.tipoAnterior)
            l << QStringLiteral("Tipo anterior: ") + oneLine(*e.tipoAnterior);
    }
    if (!e.arquivoBanco.isEmpty())
        l << kArquivoBanco + oneLine(e.arquivoBanco);
    const QString& label = e.kind == Kind::Estorno     ? kMotivoEstorno
                           : e.kind == Kind::Alteracao ? kMotivoAlteracao
                                                       : kEstornoRevertido;
    l << label + oneLine(e.motivo);
    return l;
}

bool CorrectionLog::append(const Entry& e, QString* error) const {
    const QString p = currentPath();
    if (!QDir().mkpath(folder())) {
        if (error)
            *error = QDir::toNativeSeparators(folder());
        return false;
    }
    const QFileInfo info(p);
    const QStringList body = (info.exists() && info.size() > 0) ? lines(e) : header() + lines(e);
    return TextFile::append(p, body, error);
}

bool CorrectionLog::appendTo(int year, const QList<Entry>& entries, QString* error) const {
    if (entries.isEmpty())
        return true;
    const QString p = path(year);
    if (!QDir().mkpath(folder())) {
        if (error)
            *error = QDir::toNativeSeparators(folder());
        return false;
    }
    QStringList body;
    const QFileInfo info(p);
    if (!info.exists() || info.size() == 0) {
        body = header();
    } else {
        QFile f(p);
        if (f.open(QIODevice::ReadOnly) && f.seek(f.size() - 1) && f.read(1) != "\n")
            body << QString(); // ends the torn line
    }
    for (const Entry& e : entries)
        body << lines(e);
    return TextFile::append(p, body, error);
}

QString CorrectionLog::chave(Kind kind, const QStringList& fields) {
    QStringList kept{QString::number(int(kind))};
    for (const QString& f : fields)
        if (!f.startsWith(QLatin1String("Tipo: ")) &&
            !f.startsWith(QLatin1String("Tipo anterior: ")) && !f.startsWith(kArquivoBanco))
            kept << f;
    return kept.join(QLatin1Char('\n'));
}

QList<CorrectionLog::YearFile> CorrectionLog::read(std::optional<int> year) const {
    const QString prefix = QStringLiteral("Estorno_%1_").arg(m_ctx.settings.guiche.trimmed());
    const QRegularExpression name(
        QStringLiteral("^%1(\\d{4})\\.txt$").arg(QRegularExpression::escape(prefix)),
        QRegularExpression::CaseInsensitiveOption);
    QList<YearFile> out;
    const QDir dir(folder());
    for (const QString& f : dir.entryList({prefix + QStringLiteral("*")}, QDir::Files)) {
        const auto m = name.match(f);
        if (!m.hasMatch() || (year && m.captured(1).toInt() != *year))
            continue;
        out.append({m.captured(1).toInt(), dir.filePath(f), TextFile::readLines(dir.filePath(f))});
    }
    std::sort(out.begin(), out.end(),
              [](const YearFile& a, const YearFile& b) { return a.year > b.year; });
    return out;
}

QString CorrectionLog::ParsedEntry::value(const QString& label) const {
    const QString start = label + QStringLiteral(": ");
    for (const QString& f : fields)
        if (f.startsWith(start))
            return f.mid(start.size());
    return {};
}

QList<CorrectionLog::ParsedEntry> CorrectionLog::parse(const QStringList& lines) {
    QList<ParsedEntry> out;
    bool open = false;
    for (const QString& l : lines) {
        if (l.startsWith(kMovimento)) {
            out.append(ParsedEntry{});
            open = true;
        }
        if (!open)
            continue; // the header
        out.last().fields << l;
        if (l.startsWith(kMotivoEstorno)) {
            out.last().kind = Kind::Estorno;
            open = false;
        } else if (l.startsWith(kMotivoAlteracao)) {
            out.last().kind = Kind::Alteracao;
            open = false;
        } else if (l.startsWith(kEstornoRevertido)) {
            out.last().kind = Kind::Reversao;
            open = false;
        }
    }
    return out;
}
