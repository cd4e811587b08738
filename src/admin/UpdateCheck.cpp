#include "UpdateCheck.h"

#include "AppContext.h"
#include "Options.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <future>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif
#include <memory>
#include <thread>

const QString UpdateCheck::kFileName = QStringLiteral("VersaoAtual.txt");

QString UpdateCheck::runningVersion() {
    return QStringLiteral(TOLVANE_VERSION);
}

QString UpdateCheck::firstLine(QIODevice& file, bool* readable) {
    const QByteArray head = file.read(kMaxLine + 1);
    int end = head.indexOf('\n');
    const bool whole = end >= 0 || head.size() <= kMaxLine;
    if (end < 0)
        end = int(std::min<qint64>(head.size(), kMaxLine));
    QByteArray line = head.left(end);
    if (line.endsWith('\r'))
        line.chop(1);
    const bool text = std::none_of(line.begin(), line.end(), [](char c) {
        const auto b = static_cast<unsigned char>(c);
        return (b < 0x20 && b != '\t') || (b >= 0x7F && b < 0xA0);
    });
    if (readable)
        *readable = whole && text;
    return whole && text ? QString::fromLatin1(line).trimmed() : QString();
}

UpdateCheck::Result UpdateCheck::check(const QString& folder, const QString& running) {
    if (folder.trimmed().isEmpty())
        return {State::NoFolder, {}};
    QFile f(QDir(QDir::fromNativeSeparators(folder.trimmed())).filePath(kFileName));
    if (!f.exists())
        return {State::NoFile, {}};
    if (!f.open(QIODevice::ReadOnly))
        return {State::Unreadable, {}};
    bool readable = false;
    const QString line = firstLine(f, &readable);
    if (!readable)
        return {State::Unreadable, {}};
    if (line.isEmpty())
        return {State::Empty, {}};
    return {line.compare(running) > 0 ? State::Newer : State::NotNewer, line};
}

UpdateCheck::Result
UpdateCheck::checkWithin(const QString& folder, const QString& running, int timeoutMs,
                         std::function<Result(const QString&, const QString&)> probe) {
    if (!probe)
        probe = &UpdateCheck::check;
    // A share that does not answer can block a file call for a long time: the thread is left to
    // finish on its own and its answer, if it ever comes, is dropped.
    auto promise = std::make_shared<std::promise<Result>>();
    std::future<Result> answer = promise->get_future();
    std::thread([promise, probe, folder, running] {
        promise->set_value(probe(folder, running));
    }).detach();
    if (answer.wait_for(std::chrono::milliseconds(timeoutMs)) != std::future_status::ready)
        return {State::TimedOut, {}};
    return answer.get();
}

QString UpdateCheck::folder(const AppContext& ctx) {
    const QString f = ctx.option(QStringLiteral("Opcoes"), QStringLiteral("Atualiza")).trimmed();
    return f.isEmpty() ? f : Options::resolve(ctx, f);
}

QString UpdateCheck::updaterPath(const AppContext& ctx) {
    QString p = ctx.option(QStringLiteral("Opcoes"), QStringLiteral("atualizador")).trimmed();
    if (p.isEmpty()) {
#ifdef Q_OS_WIN
        const QString name = QStringLiteral("atualizador.exe");
#else
        const QString name = QStringLiteral("atualizador");
#endif
        p = QDir(QDir::fromNativeSeparators(folder(ctx))).filePath(name);
    }
    return Options::resolve(ctx, p);
}

namespace {

// The user this program runs as; on systems without owners every file passes.
bool ownedBySafeUser(const QFileInfo& f) {
#ifdef Q_OS_UNIX
    return f.ownerId() == 0 || f.ownerId() == uint(geteuid());
#else
    Q_UNUSED(f);
    return true;
#endif
}

} // namespace

QString UpdateCheck::updaterProblem(const AppContext& ctx) {
    const QString program = updaterPath(ctx);
    const QString shown = QDir::toNativeSeparators(program);
    const QFileInfo f(program);
    if (!f.exists() && !f.isSymLink())
        return QStringLiteral("Atualizador não encontrado: %1").arg(shown);
    if (f.isSymLink() || !f.isFile())
        return QStringLiteral("O atualizador %1 não é um arquivo comum (atalho ou pasta): não "
                              "foi executado.")
            .arg(shown);
    const QString dir = folder(ctx);
    const QString inside = dir.isEmpty() ? QString() : QFileInfo(dir).canonicalFilePath();
    if (inside.isEmpty() || f.canonicalPath() != inside)
        return QStringLiteral("O atualizador %1 não está na pasta de atualização: não foi "
                              "executado.")
            .arg(shown);
    if (!ownedBySafeUser(f))
        return QStringLiteral("O atualizador %1 pertence a outro usuário: não foi executado.")
            .arg(shown);
    if (f.permissions() & (QFileDevice::WriteGroup | QFileDevice::WriteOther))
        return QStringLiteral("O atualizador %1 pode ser alterado por outros usuários: não foi "
                              "executado.")
            .arg(shown);
    return {};
}

bool UpdateCheck::startUpdater(const AppContext& ctx, QString* error) {
    const QString program = updaterPath(ctx);
    if (const QString why = updaterProblem(ctx); !why.isEmpty()) {
        if (error)
            *error = why;
        return false;
    }
    if (!QProcess::startDetached(program, {QDir::toNativeSeparators(ctx.folder)},
                                 QFileInfo(program).absolutePath())) {
        if (error)
            *error = SystemTexts::text(SystemText::AtualizadorNaoIniciou)
                         .arg(QDir::toNativeSeparators(program));
        return false;
    }
    return true;
}
