#include "CliRun.h"

#include <QJsonDocument>
#include <QProcess>

QJsonObject CliRun::json() const {
    return QJsonDocument::fromJson(outBytes).object();
}

QJsonArray CliRun::array() const {
    return QJsonDocument::fromJson(outBytes).array();
}

QString CliRun::demoPassword() const {
    return out.section(QStringLiteral("): "), 1).section(QLatin1Char('\n'), 0, 0).trimmed();
}

QStringList words(const char* line) {
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QProcess* startTolvane(const QString& folder, const QStringList& args, const QByteArray& input) {
    auto* p = new QProcess;
    p->start(qEnvironmentVariable("TOLVANE_EXE"),
             QStringList{QStringLiteral("--pasta"), folder} + args);
    p->write(input);
    p->closeWriteChannel();
    return p;
}

CliRun finishTolvane(QProcess* p, int timeoutMs) {
    const bool done = p->state() == QProcess::NotRunning || p->waitForFinished(timeoutMs);
    if (!done) {
        p->kill();
        p->waitForFinished();
    }
    CliRun r;
    if (done && p->error() != QProcess::FailedToStart && p->exitStatus() == QProcess::NormalExit)
        r.code = p->exitCode();
    r.outBytes = p->readAllStandardOutput();
    r.errBytes = p->readAllStandardError();
    r.out = QString::fromUtf8(r.outBytes);
    r.err = QString::fromUtf8(r.errBytes);
    delete p;
    return r;
}

CliRun runTolvane(const QString& folder, const QStringList& args, const QByteArray& input,
                  int timeoutMs) {
    return finishTolvane(startTolvane(folder, args, input), timeoutMs);
}
