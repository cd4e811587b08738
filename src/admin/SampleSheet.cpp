#include "SampleSheet.h"

#include "CheckDigits.h"
#include "DueFactor.h"
#include "Interleaved2of5.h"
#include "SystemTexts.h"
#include "TextFile.h"
#include "TypedLine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

const QString SampleSheet::kPdf = QStringLiteral("guias-de-exemplo.pdf");
const QString SampleSheet::kTxt = QStringLiteral("guias-de-exemplo.txt");

namespace {

QString digits(qint64 n, int width) {
    return QString::number(n).rightJustified(width, QLatin1Char('0'));
}

// A Febraban collection guide of a town hall (segment 1, value identifier 6: modulo 10), the
// kind at positions 16-19 and the due date at 20-27.
QString guide(const QString& kind4, qint64 cents, const QDate& due, const QString& free17) {
    const QString rest =
        digits(cents, 11) + kind4 + due.toString(QStringLiteral("yyyyMMdd")) + free17;
    return QStringLiteral("816") + Modulo10_arrecadacao(QStringLiteral("816") + rest) + rest;
}

// A bank slip of bank 001 with its 25-digit free field; factor 0 is a slip with no due date.
QString slip(int factor, qint64 cents, const QString& free25) {
    const QString body = QStringLiteral("0019") + digits(factor, 4) + digits(cents, 10) + free25;
    return body.left(4) + QString::number(Modulo11_boleto(body)) + body.mid(4);
}

// The kind is looked up at positions 25-27 too, which fall on the month and day of a guide's
// due date: the first day of January or November would read as kind 101.
QDate avoidingKindDigits(QDate d) {
    return d.day() == 1 ? d.addDays(1) : d;
}

QString br(const QDate& d) {
    return d.toString(QStringLiteral("dd/MM/yyyy"));
}

} // namespace

QList<SampleSheet::Guide> SampleSheet::guides(const QDate& today) {
    const QDate emDia = avoidingKindDigits(today.addDays(30));
    const QDate vencida = avoidingKindDigits(today.addDays(-20));
    const QDate anoAnterior(today.year() - 1, 12, 15);
    const QDate boleto = today.addDays(15);
    const QString iptu =
        guide(QStringLiteral("0425"), 15000, emDia, QStringLiteral("00000000000000011"));
    // SIGCB free fields of the water bills' kind (positions 20-24), then the nosso número.
    const QString agua = QStringLiteral("1234500123145640000007890");
    const QString aguaDigitada = QStringLiteral("1234500123145640000007900");
    QList<Guide> out;
    const auto add = [&out](const QString& titulo, const QString& explicacao, const QString& codigo,
                            bool barras = true) {
        out.append({titulo, explicacao, codigo, TypedLine::fromBarcode(codigo), barras});
    };
    add(QStringLiteral("1. Guia em dia"),
        QStringLiteral("IPTU de R$ 150,00, vence em %1: entra na soma pelo valor da guia.")
            .arg(br(emDia)),
        iptu);
    add(QStringLiteral("2. Guia vencida, com encargos"),
        QStringLiteral("ISSQN de R$ 200,00, venceu em %1: o caixa pergunta se recebe e soma "
                       "juros e multa.")
            .arg(br(vencida)),
        guide(QStringLiteral("0427"), 20000, vencida, QStringLiteral("00000000000000022")));
    add(QStringLiteral("3. Guia de ano anterior, bloqueada"),
        QStringLiteral("TAXAS DIVERSAS de %1: \"Não pode ser recebida!!!\", nada entra na soma.")
            .arg(br(anoAnterior)),
        guide(QStringLiteral("0426"), 8000, anoAnterior, QStringLiteral("00000000000000033")));
    add(QStringLiteral("4. Guia já paga"),
        QStringLiteral("Segunda via da guia 1: receba a guia 1 (Enter) e leia esta: \"Conta já "
                       "Recebida!!!\". Na mesma soma: \"Conta já Lançada!!!\"."),
        iptu);
    add(QStringLiteral("5. Boleto bancário"),
        QStringLiteral("AGUA E ESGOTO de R$ 87,50, vence em %1 (fator de vencimento).")
            .arg(br(boleto)),
        slip(DueFactor::factorOf(boleto), 8750, agua));
    add(QStringLiteral("6. Boleto sem vencimento"),
        QStringLiteral("BOLETO DIVERSOS de R$ 45,00, fator 0000: nunca vence."),
        slip(0, 4500,
             QStringLiteral("0000") + QStringLiteral("0101") +
                 QStringLiteral("00000000000000055")));
    add(QStringLiteral("7. Linha digitável"),
        QStringLiteral("Sem código de barras: digite a linha no botão Linha Digitável (ou "
                       "cole-a no campo do código e tecle Enter). AGUA E ESGOTO de R$ 63,20."),
        slip(DueFactor::factorOf(boleto), 6320, aguaDigitada), false);
    add(QStringLiteral("8. Tipo desconhecido"),
        QStringLiteral("Tipo 0999, que não está cadastrado: o campo do código é limpo e nada "
                       "entra na soma."),
        guide(QStringLiteral("0999"), 3000, emDia, QStringLiteral("00000000000000088")));
    return out;
}

namespace {

constexpr int kDpi = 1200;
constexpr double kUnitsPerMm = kDpi / 25.4;
constexpr int kNarrow = 16; // 0,34 mm: a common hand scanner reads it from paper or a screen
constexpr int kQuiet = 10 * kNarrow;

int mm(double v) {
    return int(v * kUnitsPerMm + 0.5);
}

// The bars of one code with their quiet zones, from `left` and `top`; answers the width drawn.
int drawBars(QPainter& p, const QString& code, int left, int top, int height) {
    const QList<int> el = Interleaved2of5::elements(code);
    int x = left + kQuiet;
    for (qsizetype i = 0; i < el.size(); ++i) {
        const int w = el[i] * kNarrow;
        if (i % 2 == 0)
            p.fillRect(x, top, w, height, Qt::black);
        x += w;
    }
    return x + kQuiet - left;
}

// The line as it is printed: a bank slip's three fields (each with a dot after its fifth
// digit), the general digit and the factor with the value; a collection code's four blocks.
QString spacedLine(const QString& line) {
    if (line.size() == 47)
        return QStringLiteral("%1.%2 %3.%4 %5.%6 %7 %8")
            .arg(line.mid(0, 5), line.mid(5, 5), line.mid(10, 5), line.mid(15, 6), line.mid(21, 5),
                 line.mid(26, 6), line.mid(32, 1), line.mid(33));
    QStringList blocks;
    for (qsizetype i = 0; i < line.size(); i += 12)
        blocks << line.mid(i, 11) + QLatin1Char('-') + line.mid(i + 11, 1);
    return blocks.join(QLatin1Char(' '));
}

bool paintSheet(QPdfWriter& pdf, const QList<SampleSheet::Guide>& guides, const QDate& today) {
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setResolution(kDpi);
    pdf.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    pdf.setTitle(QStringLiteral("Guias de exemplo"));
    pdf.setCreator(QStringLiteral("Tolvane"));
    QPainter p;
    if (!p.begin(&pdf))
        return false;
    const int width = pdf.width();
    const QFont title(QStringLiteral("DejaVu Sans"), 11, QFont::Bold);
    const QFont body(QStringLiteral("DejaVu Sans"), 9);
    const QFont mono(QStringLiteral("DejaVu Sans Mono"), 9);
    const QFont typed(QStringLiteral("DejaVu Sans Mono"), 13, QFont::Bold);
    int y = 0;
    p.setFont(title);
    p.drawText(QRect(0, y, width, mm(8)), Qt::AlignLeft | Qt::AlignTop,
               QStringLiteral("Tolvane: guias de exemplo para ler no caixa (%1)")
                   .arg(today.toString(QStringLiteral("dd/MM/yyyy"))));
    y += mm(8);
    p.setFont(body);
    p.drawText(QRect(0, y, width, mm(10)), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
               QStringLiteral("Leia cada código com o leitor (do papel ou da tela) no campo do "
                              "código do caixa. Os tipos de guia são os da demonstração "
                              "(tolvane iniciar --demo). Nenhuma destas guias é verdadeira."));
    y += mm(14);
    const int block = mm(58);
    for (const SampleSheet::Guide& g : guides) {
        if (y + block > pdf.height()) {
            pdf.newPage();
            y = 0;
        }
        p.setFont(title);
        p.drawText(QRect(0, y, width, mm(6)), Qt::AlignLeft | Qt::AlignTop, g.titulo);
        y += mm(6);
        p.setFont(body);
        p.drawText(QRect(0, y, width, mm(10)), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                   g.explicacao);
        y += mm(12);
        if (g.barras) {
            drawBars(p, g.codigo, 0, y, mm(15));
            y += mm(17);
            p.setFont(mono);
            p.drawText(QRect(kQuiet, y, width, mm(5)), Qt::AlignLeft | Qt::AlignTop, g.codigo);
            y += mm(5);
            p.drawText(QRect(kQuiet, y, width, mm(5)), Qt::AlignLeft | Qt::AlignTop,
                       QStringLiteral("Linha digitável: ") + spacedLine(g.linha));
            y += mm(13);
        } else {
            p.setFont(typed);
            p.drawText(QRect(kQuiet, y, width, mm(10)), Qt::AlignLeft | Qt::AlignTop,
                       spacedLine(g.linha));
            y += mm(28);
        }
    }
    return p.end();
}

QStringList textLines(const QList<SampleSheet::Guide>& guides, const QDate& today) {
    QStringList lines{
        QStringLiteral("Tolvane: guias de exemplo para ler no caixa (%1)")
            .arg(today.toString(QStringLiteral("dd/MM/yyyy"))),
        QStringLiteral("Os mesmos códigos da folha %1; cole um código ou uma linha digitável no "
                       "campo do código do caixa.")
            .arg(SampleSheet::kPdf),
        QString()};
    for (const SampleSheet::Guide& g : guides) {
        lines << g.titulo << g.explicacao;
        if (g.barras)
            lines << QStringLiteral("Código de barras: ") + g.codigo;
        lines << QStringLiteral("Linha digitável: ") + spacedLine(g.linha) << QString();
    }
    return lines;
}

} // namespace

SampleSheet::Written SampleSheet::write(const QString& folder, const QDate& today) {
    Written w;
    w.pdf = QDir(folder).filePath(kPdf);
    w.txt = QDir(folder).filePath(kTxt);
    const QList<Guide> list = guides(today);
    if (!QFileInfo::exists(w.txt)) {
        if (!TextFile::writeAll(w.txt, textLines(list, today), &w.error))
            return w;
        w.created = true;
    }
    if (!QFileInfo::exists(w.pdf)) {
        QSaveFile file(w.pdf);
        bool ok = file.open(QIODevice::WriteOnly);
        if (ok) {
            QPdfWriter pdf(&file);
            ok = paintSheet(pdf, list, today);
        }
        if (!ok || !file.commit()) {
            w.error = SystemTexts::text(SystemText::NaoFoiPossivelGravar)
                          .arg(QDir::toNativeSeparators(w.pdf));
            return w;
        }
        w.created = true;
    }
    return w;
}

QString SampleSheet::where(const Written& w) {
    return QStringLiteral("Folha de guias de exemplo para ler: %1 (os mesmos códigos em %2).")
        .arg(QDir::toNativeSeparators(w.pdf), QDir::toNativeSeparators(w.txt));
}
