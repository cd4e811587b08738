#include "IniFile.h"

#include "TextFile.h"

namespace {

QString sectionName(const QString& line) {
    const QString t = line.trimmed();
    if (t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']')))
        return t.mid(1, t.size() - 2).trimmed();
    return {};
}

bool isSection(const QString& line) {
    const QString t = line.trimmed();
    return t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']'));
}

// Key of a "key=value" line, or empty for comments and other lines.
QString keyOf(const QString& line) {
    const QString t = line.trimmed();
    if (t.startsWith(QLatin1Char(';')) || t.startsWith(QLatin1Char('#')))
        return {};
    const int eq = t.indexOf(QLatin1Char('='));
    return eq <= 0 ? QString() : t.left(eq).trimmed();
}

QString valueOf(const QString& line) {
    QString v = line.mid(line.indexOf(QLatin1Char('=')) + 1).trimmed();
    if (v.size() >= 2 && v.startsWith(QLatin1Char('"')) && v.endsWith(QLatin1Char('"')))
        v = v.mid(1, v.size() - 2);
    return v;
}

} // namespace

QString IniFile::readProblem(const QString& path) {
    return TextFile::readProblem(path, kMaxFileBytes);
}

QString IniFile::read(const QString& section, const QString& key, const QString& path) {
    return valueIn(section, key, TextFile::readLines(path, kMaxFileBytes));
}

QString IniFile::valueIn(const QString& section, const QString& key, const QStringList& lines) {
    bool inSection = false;
    for (const QString& line : lines) {
        if (isSection(line)) {
            inSection = sectionName(line).compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (inSection && keyOf(line).compare(key, Qt::CaseInsensitive) == 0 &&
            !keyOf(line).isEmpty())
            return valueOf(line).left(kMaxValue);
    }
    return {};
}

bool IniFile::write(const QString& section, const QString& key, const QString& value,
                    const QString& path) {
    return write(QList<Entry>{{section, key, value}}, path);
}

namespace {

// Sets one key in the file's lines: replaced where it stands, else added at the end of its
// section (or of a new section).
void setIn(QStringList& lines, const IniFile::Entry& e) {
    const QString newLine = e.key + QLatin1Char('=') + e.value;
    int sectionStart = -1;
    int lastInSection = -1;
    for (int i = 0; i < lines.size(); ++i) {
        if (isSection(lines[i])) {
            if (sectionStart >= 0)
                break;
            if (sectionName(lines[i]).compare(e.section, Qt::CaseInsensitive) == 0)
                sectionStart = lastInSection = i;
            continue;
        }
        if (sectionStart < 0)
            continue;
        if (keyOf(lines[i]).compare(e.key, Qt::CaseInsensitive) == 0 &&
            !keyOf(lines[i]).isEmpty()) {
            lines[i] = newLine;
            return;
        }
        if (!lines[i].trimmed().isEmpty())
            lastInSection = i;
    }
    if (sectionStart < 0)
        lines << QLatin1Char('[') + e.section + QLatin1Char(']') << newLine;
    else
        lines.insert(lastInSection + 1, newLine);
}

} // namespace

bool IniFile::write(const QList<Entry>& entries, const QString& path) {
    if (!readProblem(path).isEmpty())
        return false; // never replace a file that could not be read
    QStringList lines = TextFile::readLines(path, kMaxFileBytes);
    for (const Entry& e : entries)
        setIn(lines, e);
    return TextFile::writeAll(path, lines);
}
