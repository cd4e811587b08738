#include "Settings.h"

#include "IniFile.h"
#include "TextFile.h"

#include <QRegularExpression>
#include <algorithm>

bool toInt16(const QString& text, qint16& out) {
    bool ok = false;
    const int v = text.trimmed().toInt(&ok, 10);
    if (!ok || v < -32768 || v > 32767)
        return false;
    out = static_cast<qint16>(v);
    return true;
}

bool Carrega_config(const QString& iniPath, Settings& s) {
    const QStringList lines = TextFile::readLines(iniPath, IniFile::kMaxFileBytes);
    auto text = [&](const char* section, const char* key) {
        return IniFile::valueIn(QLatin1String(section), QLatin1String(key), lines);
    };
    // A failed conversion skips this one assignment and loading goes on.
    auto integer = [&](const char* section, const char* key, qint16& target) {
        qint16 v;
        if (toInt16(text(section, key), v))
            target = v;
    };

    s.guiche = text("Export", "guiche");
    s.mensagem = text("Mensagem", "mensagem");
    s.cabecalho = text("Mensagem", "cabecalho");
    // [Reserva] cofre is read only by the database update that takes the safe's balance in.
    s.pref = text("Mensagem", "pref");
    integer("Reserva", "soma", s.soma);
    s.guiche2 = text("Export", "guiche");
    s.Path3 = text("Export", "Path3");
    integer("Opcoes", "juros", s.juros);
    s.Path2 = text("Export", "Path2");
    s.impressora = text("Print", "impressora");
    s.modo = text("Print", "modo");
    s.modo_print = text("Print", "modo_print");
    integer("Print", "print_cupom", s.print_cupom);
    integer("Opcoes", "porta", s.opcoes_porta);
    s.porta = text("Print", "porta");
    s.impressora_autenticadora = text("Print", "impressora_autenticadora");
    s.impressora_padrao = text("Print", "impressora_padrao");
    integer("Export", "tecla_mais", s.tecla_mais);
    integer("Print", "lineFeed", s.lineFeed);
    integer("Print", "disableEsc", s.disableEsc);
    s.ip = QString() + text("Print", "ip");
    if (s.ip.isNull())
        s.ip = QLatin1String("");
    // The current value's digits followed by the file's, so a second load with 1 in the file
    // gives 11: consumers treat the network check as on only when it is exactly 1.
    qint16 rede;
    if (toInt16(QString::number(s.rede) + text("Export", "rede"), rede))
        s.rede = rede;
    return IniFile::readProblem(iniPath).isEmpty();
}

bool isMoneyKindList(const QString& value) {
    const QStringList codes =
        value.split(QRegularExpression(QStringLiteral("[;,\\s]+")), Qt::SkipEmptyParts);
    return std::all_of(codes.begin(), codes.end(), [](const QString& c) {
        return std::all_of(c.begin(), c.end(),
                           [](QChar ch) { return ch.isDigit() && ch.unicode() < 128; });
    });
}
