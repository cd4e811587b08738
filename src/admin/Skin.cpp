#include "Skin.h"

#include "AppContext.h"
#include "Options.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>

static void initSkinResources() {
    Q_INIT_RESOURCE(tolvane_core);
}

namespace {

constexpr qint32 kFileNotFound = 53;
constexpr qint32 kInvalidFile = 321;

// Comments removed; false when one is left open.
bool withoutComments(const QString& text, QString& out) {
    out.clear();
    int i = 0;
    while (i < text.size()) {
        const int start = text.indexOf(QLatin1String("/*"), i);
        if (start < 0) {
            out += text.mid(i);
            return true;
        }
        out += text.mid(i, start - i);
        const int end = text.indexOf(QLatin1String("*/"), start + 2);
        if (end < 0)
            return false;
        i = end + 2;
    }
    return true;
}

// Every block has a selector before it and closes; at least one rule.
QString structureProblem(const QString& sheet) {
    int depth = 0;
    int rules = 0;
    int afterLast = 0;
    for (int i = 0; i < sheet.size(); ++i) {
        const QChar c = sheet[i];
        if (c == QLatin1Char('{')) {
            if (depth == 0 && sheet.mid(afterLast, i - afterLast).trimmed().isEmpty())
                return QStringLiteral("regra sem seletor");
            ++depth;
        } else if (c == QLatin1Char('}')) {
            if (--depth < 0)
                return QStringLiteral("chave fechada sem ter sido aberta");
            if (depth == 0) {
                ++rules;
                afterLast = i + 1;
            }
        }
    }
    if (depth != 0)
        return QStringLiteral("chave aberta sem ser fechada");
    if (rules == 0)
        return QStringLiteral("nenhuma regra de estilo");
    if (!sheet.mid(afterLast).trimmed().isEmpty())
        return QStringLiteral("texto depois da última regra");
    return {};
}

} // namespace

QString Skin::defaultPath() {
    return QStringLiteral(":/skins/padrao.qss");
}

QList<QPair<QString, QString>> Skin::shipped() {
    return {{QStringLiteral("Padrão"), defaultPath()},
            {QStringLiteral("Escuro"), QStringLiteral(":/skins/escuro.qss")},
            {QStringLiteral("Alto contraste"), QStringLiteral(":/skins/alto-contraste.qss")}};
}

std::optional<QString> Skin::read(const QString& path, QString* problem) {
    initSkinResources();
    auto fail = [problem](const QString& why) -> std::optional<QString> {
        if (problem)
            *problem = why;
        return std::nullopt;
    };
    QFile f(path);
    if (path.trimmed().isEmpty() || !f.exists())
        return fail(QStringLiteral("arquivo não encontrado"));
    if (!f.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("arquivo não pode ser lido"));
    const QByteArray bytes = f.read(kMaxBytes + 1);
    if (bytes.size() > kMaxBytes)
        return fail(QStringLiteral("arquivo grande demais para uma aparência"));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8.decode(bytes);
    if (utf8.hasError())
        return fail(QStringLiteral("não é um arquivo de texto"));
    for (QChar c : text)
        if (c.unicode() < 0x20 && c != QLatin1Char('\n') && c != QLatin1Char('\r') &&
            c != QLatin1Char('\t') && c != QLatin1Char('\f'))
            return fail(QStringLiteral("não é um arquivo de texto"));
    QString sheet;
    if (!withoutComments(text, sheet))
        return fail(QStringLiteral("comentário aberto sem ser fechado"));
    const QString why = structureProblem(sheet);
    if (!why.isEmpty())
        return fail(why);
    return text;
}

Skin::Chosen Skin::current(AppContext& ctx) {
    const QString stored = ctx.option(QStringLiteral("Skin"), QStringLiteral("nome")).trimmed();
    const QString configured = stored.isEmpty() ? QString() : Options::resolve(ctx, stored);
    if (!configured.isEmpty()) {
        QString problem;
        if (const auto sheet = read(configured, &problem))
            return {configured, *sheet, false};
        ctx.errors.append(QStringLiteral("Função Carrega_skin"),
                          {QFile::exists(configured) ? kInvalidFile : kFileNotFound,
                           QStringLiteral("Aparência %1 não usada (%2); usada a padrão.")
                               .arg(QDir::toNativeSeparators(configured), problem),
                           QStringLiteral("Skin")});
    }
    return {defaultPath(), read(defaultPath()).value_or(QString()), !configured.isEmpty()};
}
