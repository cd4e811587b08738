#include "ReportFile.h"

#include "SystemTexts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString ReportFile::recusa(const QString& path) {
    const QFileInfo info(path);
    if (path.trimmed().isEmpty())
        return SystemTexts::text(SystemText::InformeNomeArquivo);
    if (info.exists() || info.isSymLink())
        return SystemTexts::text(SystemText::ArquivoNaoSubstituido)
            .arg(QDir::toNativeSeparators(path));
    if (!info.absoluteDir().exists())
        return SystemTexts::text(SystemText::PastaDoArquivoNaoExiste)
            .arg(QDir::toNativeSeparators(path));
    return {};
}

QString ReportFile::temporario(const QString& path) {
    const QFileInfo info(path);
    return info.absoluteDir().filePath(QStringLiteral(".%1.parcial").arg(info.fileName()));
}

bool ReportFile::publicar(const QString& temp, const QString& path, QString* why) {
    const QString refused = recusa(path);
    // QFile::rename never replaces an existing file, so a name taken meanwhile is kept.
    if (!refused.isEmpty() || !QFile::rename(temp, path)) {
        QFile::remove(temp);
        if (why)
            *why = refused.isEmpty() ? QStringLiteral("O arquivo %1 não pôde ser gravado.")
                                           .arg(QDir::toNativeSeparators(path))
                                     : refused;
        return false;
    }
    return true;
}

bool ReportFile::gravar(const QString& path, const QByteArray& bytes, QString* why) {
    if (const QString refused = recusa(path); !refused.isEmpty()) {
        if (why)
            *why = refused;
        return false;
    }
    const QString temp = temporario(path);
    QFile f(temp);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size() ||
        !f.flush()) {
        f.close();
        QFile::remove(temp);
        if (why)
            *why = QStringLiteral("O arquivo %1 não pôde ser gravado.")
                       .arg(QDir::toNativeSeparators(path));
        return false;
    }
    f.close();
    return publicar(temp, path, why);
}
