// Typed lines by the million: `tolvane linha -` against `cat` (the input/output floor) and two
// JavaScript libraries from npm, whole processes on the same file of valid and corrupted lines
// made here. Prints the times, the ratios and where Tolvane and the validating library disagree,
// by kind of line. Fails only when Tolvane's answers are not those the file was made to get.
//   bench_linha [--linhas N] [--rodadas R]
//   bench_linha --gerar ARQUIVO [--linhas N]     only writes the file (for profiling)
#include "CheckDigits.h"
#include "TypedLine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <vector>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

enum class Expect { Accept, Refuse, Any };

struct Kind {
    const char* name;
    Expect tolvane;
    int weight; // per thousand lines
};

// The kinds of line in the file. The last ones are refused by one side and accepted by the
// other; docs/PERFORMANCE.md explains each.
enum KindId {
    SlipPlain,
    SlipPrinted,
    CollectionPlain,
    CollectionPrinted,
    FieldDigit,
    GeneralDigit,
    Mistyped,
    Swapped,
    OneLess,
    OneMore,
    Blank,
    NotStartingWith8,
    Segment0or8,
    Letter,
    OtherSeparator,
    ValueId0to5,
    Barcode44,
    kKinds
};

constexpr std::array<Kind, kKinds> kKindTable = {{
    {"boleto", Expect::Accept, 175},
    {"boleto, como impresso", Expect::Accept, 175},
    {"arrecadação", Expect::Accept, 175},
    {"arrecadação, como impressa", Expect::Accept, 175},
    {"dígito de um campo trocado", Expect::Refuse, 40},
    {"dígito geral trocado", Expect::Refuse, 30},
    {"um número trocado", Expect::Any, 40},
    {"dois números invertidos", Expect::Any, 30},
    {"um número a menos", Expect::Any, 20},
    {"um número a mais", Expect::Any, 20},
    {"linha em branco", Expect::Refuse, 10},
    {"48 números sem 8 no início", Expect::Refuse, 20},
    {"segmento 0 ou 8", Expect::Refuse, 20},
    {"letra entre os números", Expect::Refuse, 20},
    {"separador que não é ponto, traço ou espaço", Expect::Refuse, 20},
    {"identificador de valor de 0 a 5", Expect::Accept, 15},
    {"código de barras (44) no lugar da linha", Expect::Refuse, 15},
}};

using Barcode = std::array<char, 44>;

struct Made {
    std::string text; // the file
    std::vector<quint8> kinds;
    std::vector<Barcode> barcodes; // of the lines Tolvane must accept, in order
};

class LineMaker {
public:
    LineMaker() : m_rng(20261123) {}

    Made make(int count) {
        Made m;
        m.text.reserve(size_t(count) * 56);
        m.kinds.reserve(size_t(count));
        std::vector<int> weights;
        for (const Kind& k : kKindTable)
            weights.push_back(k.weight);
        std::discrete_distribution<int> pick(weights.begin(), weights.end());
        for (int i = 0; i < count; ++i) {
            const int kind = pick(m_rng);
            Barcode b{};
            m.text += line(kind, b);
            m.text += below(10) == 0 ? "\r\n" : "\n";
            m.kinds.push_back(quint8(kind));
            if (kKindTable[size_t(kind)].tolvane == Expect::Accept)
                m.barcodes.push_back(b);
        }
        return m;
    }

private:
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }
    char anyDigit() { return char('0' + below(10)); }
    char otherDigit(char d) { return char('0' + (d - '0' + 1 + below(9)) % 10); }

    Barcode slip() {
        static const char* const banks[] = {"001", "033", "104", "237", "341",
                                            "748", "756", "077", "260", "422"};
        Barcode b;
        std::copy_n(banks[below(10)], 3, b.begin());
        b[3] = '9';
        int factor = 1000 + below(9000);
        for (size_t i = 8; i >= 5; --i, factor /= 10)
            b[i] = char('0' + factor % 10);
        for (size_t i = 9; i < 44; ++i)
            b[i] = anyDigit();
        for (size_t i = 9; i < 13; ++i)
            b[i] = '0'; // values up to a million
        setSlipDigit(b);
        return b;
    }

    static void setSlipDigit(Barcode& b) {
        char body[43];
        std::copy_n(b.begin(), 4, body);
        std::copy_n(b.begin() + 5, 39, body + 4);
        b[4] = char('0' + CheckDigits::modulo11Slip({body, 43}));
    }

    Barcode collection(char segment, char valueId) {
        Barcode b;
        b[0] = '8';
        b[1] = segment;
        b[2] = valueId;
        for (size_t i = 4; i < 44; ++i)
            b[i] = anyDigit();
        setCollectionDigit(b);
        return b;
    }

    static void setCollectionDigit(Barcode& b) {
        char body[43];
        std::copy_n(b.begin(), 3, body);
        std::copy_n(b.begin() + 4, 40, body + 3);
        b[3] = char('0' + CheckDigits::collection(b[2], {body, 43}));
    }

    Barcode anyCollection() { return collection("12345679"[below(8)], char('6' + below(4))); }
    Barcode anyCode() { return below(2) ? slip() : anyCollection(); }

    static std::string digitsOf(const Barcode& b) {
        return TypedLine::fromBarcode(QString::fromLatin1(b.data(), 44)).toStdString();
    }

    static std::string printedSlip(const std::string& l) {
        return l.substr(0, 5) + '.' + l.substr(5, 5) + ' ' + l.substr(10, 5) + '.' +
               l.substr(15, 6) + ' ' + l.substr(21, 5) + '.' + l.substr(26, 6) + ' ' +
               l.substr(32, 1) + ' ' + l.substr(33);
    }

    static std::string printedCollection(const std::string& l, const char* sep = "-") {
        std::string s;
        for (size_t i = 0; i < 4; ++i)
            s += (i ? " " : "") + l.substr(i * 12, 11) + sep + l.substr(i * 12 + 11, 1);
        return s;
    }

    std::string printed(const std::string& l) {
        return l.size() == 47 ? printedSlip(l) : printedCollection(l);
    }

    std::string line(int kind, Barcode& b) {
        switch (kind) {
        case SlipPlain:
            b = slip();
            return digitsOf(b);
        case SlipPrinted:
            b = slip();
            return printedSlip(digitsOf(b));
        case CollectionPlain:
            b = anyCollection();
            return digitsOf(b);
        case CollectionPrinted:
            b = anyCollection();
            return printedCollection(digitsOf(b));
        case ValueId0to5:
            b = collection("12345679"[below(8)], char('0' + below(6)));
            return digitsOf(b);
        default:
            return corrupted(kind);
        }
    }

    std::string corrupted(int kind) {
        Barcode b = anyCode();
        std::string l = digitsOf(b);
        const bool isSlip = l.size() == 47;
        switch (kind) {
        case FieldDigit: {
            const size_t slipAt[] = {9, 20, 31};
            const size_t collectionAt[] = {11, 23, 35, 47};
            const size_t at = isSlip ? slipAt[below(3)] : collectionAt[below(4)];
            l[at] = otherDigit(l[at]);
            return l;
        }
        case GeneralDigit:
            b[isSlip ? 4 : 3] = otherDigit(b[isSlip ? 4 : 3]);
            return digitsOf(b);
        case Mistyped: {
            const size_t at = size_t(below(int(l.size())));
            l[at] = otherDigit(l[at]);
            return l;
        }
        case Swapped: {
            size_t at = size_t(below(int(l.size()) - 1));
            while (l[at] == l[at + 1])
                at = size_t(below(int(l.size()) - 1));
            std::swap(l[at], l[at + 1]);
            return l;
        }
        case OneLess:
            return l.erase(size_t(below(int(l.size()))), 1);
        case OneMore:
            return l.insert(size_t(below(int(l.size()) + 1)), 1, anyDigit());
        case Blank:
            return below(2) ? "" : "   ";
        case NotStartingWith8: {
            l = digitsOf(anyCollection());
            l[0] = char('0' + below(8));
            l[11] = char('0' + CheckDigits::collection(l[2], {l.data(), 11}));
            return printedCollection(l);
        }
        case Segment0or8:
            return printed(digitsOf(collection(below(2) ? '0' : '8', char('6' + below(4)))));
        case Letter:
            return l.insert(size_t(below(int(l.size()) + 1)), 1, char('A' + below(26)));
        case OtherSeparator:
            return isSlip ? printedSlip(l).replace(5, 1, "/") : printedCollection(l, "/");
        case Barcode44:
            return std::string(b.data(), 44);
        }
        return l;
    }

    std::mt19937 m_rng;
};

struct Timing {
    double wall = 0;
    double cpu = -1; // the child's user and system time, where the system tells it
};

double childrenCpu() {
#ifdef Q_OS_UNIX
    rusage u{};
    getrusage(RUSAGE_CHILDREN, &u);
    return double(u.ru_utime.tv_sec + u.ru_stime.tv_sec) +
           double(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
#else
    return -1;
#endif
}

struct Contender {
    Contender(QString l, QString p, QStringList a, QString o)
        : label(std::move(l)), program(std::move(p)), args(std::move(a)), output(std::move(o)) {}
    QString label;
    QString program;
    QStringList args;
    QString output;
    std::vector<Timing> runs;
    bool failed = false;

    Timing median() const {
        std::vector<Timing> s = runs;
        std::sort(s.begin(), s.end(),
                  [](const Timing& a, const Timing& b) { return a.wall < b.wall; });
        return s.empty() ? Timing{} : s[s.size() / 2];
    }
};

bool runOnce(Contender& c, const QString& input) {
    QProcess p;
    p.setStandardInputFile(input);
    p.setStandardOutputFile(c.output);
    p.setStandardErrorFile(QProcess::nullDevice());
    const double cpu0 = childrenCpu();
    QElapsedTimer t;
    t.start();
    p.start(c.program, c.args);
    if (!p.waitForStarted(30000) || !p.waitForFinished(600000) ||
        p.exitStatus() != QProcess::NormalExit)
        return false;
    const double wall = double(t.nsecsElapsed()) / 1e9;
    const double cpu1 = childrenCpu();
    c.runs.push_back({wall, cpu0 < 0 ? -1 : cpu1 - cpu0});
    return true;
}

// The two libraries, installed with npm into the build folder when node is on the machine.
bool peersReady(const QString& dir) {
    const QString node = QStandardPaths::findExecutable(QStringLiteral("node"));
    const QString npm = QStandardPaths::findExecutable(QStringLiteral("npm"));
    if (node.isEmpty() || npm.isEmpty()) {
        std::printf("node ou npm ausente: só tolvane e cat.\n");
        return false;
    }
    QDir().mkpath(dir);
    const auto installed = [&dir] {
        return QFile::exists(dir + QStringLiteral("/node_modules/@brazilian-utils/brazilian-"
                                                  "utils/package.json")) &&
               QFile::exists(dir + QStringLiteral("/node_modules/@mrmgomes/boleto-utils/"
                                                  "package.json"));
    };
    if (!installed()) {
        std::printf("instalando as bibliotecas com npm em %s ...\n", qPrintable(dir));
        QProcess p;
        p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        p.setStandardOutputFile(QProcess::nullDevice());
        p.start(npm, {QStringLiteral("install"), QStringLiteral("--prefix"), dir,
                      QStringLiteral("--no-audit"), QStringLiteral("--no-fund"),
                      QStringLiteral("@brazilian-utils/brazilian-utils@2.4.0"),
                      QStringLiteral("@mrmgomes/boleto-utils@1.3.3")});
        p.waitForFinished(600000);
    }
    if (!installed()) {
        std::printf("as bibliotecas não puderam ser instaladas: só tolvane e cat.\n");
        return false;
    }
    const QString script = dir + QStringLiteral("/linha_peer.js");
    QFile::remove(script);
    return QFile::copy(QStringLiteral(BENCH_SOURCE_DIR "/linha_peer.js"), script);
}

QList<QByteArray> outputLines(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> lines = f.readAll().split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool isBarcode(const QByteArray& l) {
    return l.size() == 44 && CheckDigits::allDigits({l.constData(), 44});
}

// Tolvane's answers against what each line was made to get.
bool checkTolvane(const Made& made, const QList<QByteArray>& answers) {
    if (answers.size() != qsizetype(made.kinds.size())) {
        std::printf("ERRO: %lld respostas para %zu linhas\n", qlonglong(answers.size()),
                    made.kinds.size());
        return false;
    }
    size_t accepted = 0;
    qint64 wrong = 0;
    for (size_t i = 0; i < made.kinds.size(); ++i) {
        const Expect e = kKindTable[made.kinds[i]].tolvane;
        const QByteArray& a = answers[qsizetype(i)];
        if (e == Expect::Accept)
            wrong += a != QByteArray(made.barcodes[accepted++].data(), 44);
        else if (e == Expect::Refuse)
            wrong += isBarcode(a);
    }
    if (wrong > 0)
        std::printf("ERRO: %lld respostas do tolvane diferentes das esperadas\n", wrong);
    return wrong == 0;
}

void printAgreement(const Made& made, const QList<QByteArray>& tolvane,
                    const QList<QByteArray>& validator, const QList<QByteArray>& converter) {
    struct Row {
        qint64 lines = 0, tolvane = 0, peer = 0, differ = 0;
    };
    std::array<Row, kKinds> rows{};
    qint64 differ = 0, sameBarcode = 0, accepted = 0;
    for (size_t i = 0; i < made.kinds.size(); ++i) {
        const auto q = qsizetype(i);
        const bool t = isBarcode(tolvane[q]);
        const bool v = q < validator.size() && validator[q] == "1";
        Row& r = rows[made.kinds[i]];
        ++r.lines;
        r.tolvane += t;
        r.peer += v;
        r.differ += t != v;
        differ += t != v;
        if (t && q < converter.size()) {
            ++accepted;
            sameBarcode += converter[q] == tolvane[q];
        }
    }
    const auto n = qint64(made.kinds.size());
    std::printf("\nAceita/recusa igual a isValidBoleto em %lld de %lld linhas (%.2f%%)\n",
                n - differ, n, 100.0 * double(n - differ) / double(n));
    std::printf("%-45s %9s %9s %9s %9s\n", "tipo de linha", "linhas", "tolvane", "isValid",
                "diferem");
    for (int k = 0; k < kKinds; ++k)
        std::printf("%-*s %9lld %9lld %9lld %9lld\n",
                    45 + int(qstrlen(kKindTable[size_t(k)].name)) -
                        int(QString::fromUtf8(kKindTable[size_t(k)].name).size()),
                    kKindTable[size_t(k)].name, rows[size_t(k)].lines, rows[size_t(k)].tolvane,
                    rows[size_t(k)].peer, rows[size_t(k)].differ);
    if (!converter.isEmpty())
        std::printf("linhaDigitavel2CodBarras dá o mesmo código em %lld das %lld linhas que o "
                    "tolvane aceita\n",
                    sameBarcode, accepted);
}

void printTimes(const QList<Contender*>& all, const Contender& tolvane, qint64 lines) {
    const double t = tolvane.median().wall;
    std::printf("\n%-40s %10s %10s %12s %12s\n", "programa", "tempo (s)", "CPU (s)", "linhas/s",
                "÷ tolvane");
    for (const Contender* c : all) {
        if (c->runs.empty())
            continue;
        const Timing m = c->median();
        std::printf("%-40s %10.3f %10.3f %12.0f %12.2f\n", qPrintable(c->label), m.wall, m.cpu,
                    double(lines) / m.wall, m.wall / t);
    }
}

bool target(const char* what, double ratio, double goal, bool atLeast) {
    const bool met = atLeast ? ratio >= goal : ratio <= goal;
    std::printf("  %-52s %6.2f  (meta %s %.0f) %s\n", what, ratio, atLeast ? ">=" : "<=", goal,
                met ? "ok" : "NÃO ATINGIDA");
    return met;
}

int argValue(const QStringList& args, const QString& name, int fallback) {
    const qsizetype i = args.indexOf(name);
    return i >= 0 && i + 1 < args.size() ? args[i + 1].toInt() : fallback;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int count = argValue(args, QStringLiteral("--linhas"), 1000000);
    const int rounds = std::max(1, argValue(args, QStringLiteral("--rodadas"), 3));

    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    const qsizetype only = args.indexOf(QStringLiteral("--gerar"));
    const QString input = only >= 0 && only + 1 < args.size()
                              ? args[only + 1]
                              : dir.filePath(QStringLiteral("linhas.txt"));
    const Made made = LineMaker().make(count);
    {
        QFile f(input);
        if (!f.open(QIODevice::WriteOnly) ||
            f.write(made.text.data(), qint64(made.text.size())) != qint64(made.text.size()))
            return 1;
    }
    if (only >= 0)
        return 0;
    std::printf("Linhas digitáveis: %d linhas, %.1f MB, %d rodadas (mediana)\n", count,
                double(made.text.size()) / 1e6, rounds);

    Contender tolvane{QStringLiteral("tolvane linha -"),
                      QStringLiteral(TOLVANE_EXE),
                      {QStringLiteral("--pasta"), dir.filePath(QStringLiteral("pasta")),
                       QStringLiteral("linha"), QStringLiteral("-")},
                      dir.filePath(QStringLiteral("tolvane.out"))};
    Contender cat{QStringLiteral("cat"),
                  QStandardPaths::findExecutable(QStringLiteral("cat")),
                  {},
                  dir.filePath(QStringLiteral("cat.out"))};
    const QString peers = QStringLiteral(BENCH_PEERS_DIR);
    const QString node = QStandardPaths::findExecutable(QStringLiteral("node"));
    const QString script = peers + QStringLiteral("/linha_peer.js");
    Contender validator{QStringLiteral("@brazilian-utils (isValidBoleto)"),
                        node,
                        {script, QStringLiteral("brazilian-utils")},
                        dir.filePath(QStringLiteral("brazilian.out"))};
    Contender converter{QStringLiteral("@mrmgomes/boleto-utils (linhaDigitavel2CodBarras)"),
                        node,
                        {script, QStringLiteral("boleto-utils")},
                        dir.filePath(QStringLiteral("mrmgomes.out"))};

    QList<Contender*> all{&tolvane};
    if (!cat.program.isEmpty())
        all << &cat;
    if (peersReady(peers))
        all << &validator << &converter;

    for (int r = 0; r < rounds; ++r)
        for (Contender* c : all)
            if (!c->failed && !runOnce(*c, input)) {
                std::printf("ERRO: %s não terminou\n", qPrintable(c->label));
                c->failed = true;
            }
    if (tolvane.failed)
        return 1;

    const QList<QByteArray> answers = outputLines(tolvane.output);
    const bool right = checkTolvane(made, answers);
    printTimes(all, tolvane, count);
    const double t = tolvane.median().wall;
    std::printf("\nMetas (tempo de processo inteiro, mediana):\n");
    if (!cat.runs.empty())
        target("tolvane ÷ cat", t / cat.median().wall, 5, false);
    if (!converter.runs.empty())
        target("@mrmgomes/boleto-utils ÷ tolvane", converter.median().wall / t, 8, true);
    if (!validator.runs.empty()) {
        target("@brazilian-utils ÷ tolvane", validator.median().wall / t, 10, true);
        printAgreement(made, answers, outputLines(validator.output),
                       converter.runs.empty() ? QList<QByteArray>{}
                                              : outputLines(converter.output));
    }
    return right && !cat.failed && !validator.failed && !converter.failed ? 0 : 1;
}
