#include "frmFrente.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "AuthCounterPrinter.h"
#include "CalculatorDialog.h"
#include "CashDayMenu.h"
#include "Clock.h"
#include "CommandRibbon.h"
#include "CounterSession.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "LancadosModel.h"
#include "NetworkStatus.h"
#include "OverdueHandler.h"
#include "PrinterWorker.h"
#include "ReportsMenu.h"
#include "ReversalUndoDialog.h"
#include "frmAtualiza.h"
#include "frmAutenticar.h"
#include "frmAvulso.h"
#include "frmCodBarra.h"
#include "frmCorrigeGuia.h"
#include "frmExbi.h"
#include "frmExportar.h"
#include "frmFeriados.h"
#include "frmJuros.h"
#include "frmLdg.h"
#include "frmOpcoes.h"
#include "frmSkin.h"
#include "frmUsuarios.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kAviso = QStringLiteral("Aviso");
const QString kReady = QStringLiteral("color: #006000");
const QString kAlert = QStringLiteral("color: #b00000");
constexpr int kRedeMs = 5000; // how often the network label looks at the central and the outbox

QLabel* label(const QString& name, const QString& text, QWidget* parent, int pointSize = 0,
              bool bold = false) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    if (pointSize || bold) {
        QFont f = l->font();
        if (pointSize)
            f.setPointSize(pointSize);
        f.setBold(bold);
        l->setFont(f);
    }
    return l;
}

bool allDigits(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

// What the cashier sees in lblStatus when a read ends without a notice of its own.
QString statusText(ReadingDecision::Outcome o) {
    switch (o) {
    case ReadingDecision::Outcome::Encerrado:
        return QStringLiteral("Movimento encerrado: reabra com F5 para receber");
    case ReadingDecision::Outcome::Desconhecida:
        return QStringLiteral("Tipo de guia não cadastrado");
    case ReadingDecision::Outcome::Digito:
        return QStringLiteral("Dígito verificador não confere");
    case ReadingDecision::Outcome::NaoReconhecida:
        return QStringLiteral("Código não reconhecido: confira o tipo de guia");
    default:
        break;
    }
    return {};
}
} // namespace

frmFrente::frmFrente(CounterSession& session, bool consulta, QWidget* parent)
    : QMainWindow(parent), m_session(session), m_ctx(session.ctx()), m_consulta(consulta) {
    setObjectName(QStringLiteral("frmFrente"));
    setWindowTitle(consulta ? QStringLiteral("Tolvane - Caixa (consulta)")
                            : QStringLiteral("Tolvane - Caixa"));
    m_keyClock.start();
    buildUi();
    buildMenus();
    buildRibbon();
    m_statusTimer = new QTimer(this);
    m_statusTimer->setSingleShot(true);
    connect(m_statusTimer, &QTimer::timeout, this, &frmFrente::refreshStatus);
    auto* timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("tmrDiaHora"));
    connect(timer, &QTimer::timeout, this, &frmFrente::tick);
    timer->start(1000);
    tick();
    auto* rede = new QTimer(this);
    rede->setObjectName(QStringLiteral("tmrRede"));
    connect(rede, &QTimer::timeout, this, &frmFrente::refreshNetwork);
    rede->start(kRedeMs);
    fillKinds();
    m_session.kindsFilled = [this](const GuideKinds& kinds, bool selectFirst) {
        showKinds(kinds, selectFirst);
    };
    if (m_consulta) {
        // A past day is only looked at: what cannot act here is shown disabled.
        for (QWidget* w : {static_cast<QWidget*>(m_entry), static_cast<QWidget*>(m_kinds),
                           static_cast<QWidget*>(m_valor)})
            w->setEnabled(false);
        for (const char* name : {"mnuEncerrar", "mnuReabrir", "mnuGravar", "mnuCarregar",
                                 "mnuRemove", "mnuExcluiUltimo", "mnuLimpar", "mnuLimpaIdent",
                                 "mnuLdg", "mnuAvulso", "mnuReautenticar", "mnuReautNumero"})
            if (QAction* a = action(name))
                a->setEnabled(false);
        for (const char* name : {"cmdLdg", "cmdAvulso"})
            findChild<QPushButton*>(QLatin1String(name))->setEnabled(false);
    }
    refreshAll();
    // The screen sees every key first, wherever the focus is inside it.
    qApp->installEventFilter(this);
    m_entry->setFocus();
}

frmFrente::~frmFrente() {
    qApp->removeEventFilter(this);
    m_session.kindsFilled = nullptr;
    if (m_authPrinter)
        m_authPrinter->autenticados = nullptr;
}

QAction* frmFrente::action(const char* name) const {
    return findChild<QAction*>(QLatin1String(name));
}

QWidget* frmFrente::buildTopBar(QWidget* parent) {
    auto* bar = new QWidget(parent);
    m_status = label(QStringLiteral("lblStatus"), QString(), bar, 16, true);
    m_rede = label(QStringLiteral("lblStatusRede"), QStringLiteral("REDE INATIVA"), bar, 0, true);
    m_rede->setStyleSheet(kAlert);
    // Its room is kept while hidden: the central going away never reflows or widens the bar.
    QSizePolicy redePolicy = m_rede->sizePolicy();
    redePolicy.setRetainSizeWhenHidden(true);
    m_rede->setSizePolicy(redePolicy);
    m_rede->hide();
    m_user = label(QStringLiteral("lbluser"), QString(), bar, 12);
    m_dataCaixa = label(QStringLiteral("lblDataCaixa"), QString(), bar, 18, true);
    m_dataCaixa->setContentsMargins(8, 2, 8, 2);
    m_dia = label(QStringLiteral("lblDia"), QString(), bar, 12);
    m_hora = label(QStringLiteral("lblHora"), QString(), bar, 18, true);
    // A long status line wraps inside the room left; it never widens the window.
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_status->setMinimumWidth(150);
    m_status->setWordWrap(true);
    auto* top = new QHBoxLayout(bar);
    top->setContentsMargins(0, 0, 0, 0);
    top->addWidget(m_status, 1);
    top->addWidget(m_rede);
    top->addWidget(m_user);
    top->addSpacing(16);
    top->addWidget(m_dataCaixa);
    top->addSpacing(16);
    top->addWidget(m_dia);
    top->addSpacing(8);
    top->addWidget(m_hora);
    return bar;
}

QWidget* frmFrente::buildLancados(QWidget* parent) {
    auto* box = new QWidget(parent);
    m_lancadoTitle = label(QStringLiteral("lblLancado"), QString(), box, 13, true);
    m_lancado = new QTreeView(box);
    m_lancado->setObjectName(QStringLiteral("lstLancado"));
    m_lancado->setRootIsDecorated(false);
    m_lancado->setUniformRowHeights(true);
    m_lancado->setAlternatingRowColors(true);
    m_lancadoModel = new LancadosModel(
        [this](qint32 antesDe, int limite) { return m_session.lancados(antesDe, limite); }, this);
    m_lancado->setModel(m_lancadoModel);
    m_lancadoModel->attach(m_lancado);
    QFont f = m_lancado->font();
    f.setPointSize(12);
    m_lancado->setFont(f);
    QHeaderView* h = m_lancado->header();
    h->setStretchLastSection(false);
    h->setSectionResizeMode(0, QHeaderView::Fixed);
    h->setSectionResizeMode(1, QHeaderView::Stretch);
    h->setSectionResizeMode(2, QHeaderView::Fixed);
    // Whole amounts: the value column is as wide as the largest amount a day can hold.
    const QFontMetrics fm(f);
    h->resizeSection(0, fm.horizontalAdvance(QStringLiteral("00000")) + 16);
    h->resizeSection(2, fm.horizontalAdvance(QStringLiteral("99.999.999,99")) + 20);
    m_lancado->setMinimumWidth(430);
    m_dayTotals = label(QStringLiteral("lblTotalDia"), QString(), box, 13, true);
    m_dayTotals->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* v = new QVBoxLayout(box);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_lancadoTitle);
    v->addWidget(m_lancado, 1);
    v->addWidget(m_dayTotals);
    return box;
}

void frmFrente::buildUi() {
    auto* central = new QWidget(this);
    setCentralWidget(central);

    m_impressora = label(QStringLiteral("lblImpressora"), QString(), central, 14, true);
    m_impressora->setContentsMargins(10, 6, 10, 6);
    m_impressora->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_impressora->setWordWrap(true);
    m_impressora->hide();

    m_entry = new QLineEdit(central);
    m_entry->setObjectName(QStringLiteral("txtValorCodBarra"));
    m_entry->setMaxLength(60);
    QFont big = m_entry->font();
    big.setPointSize(18);
    m_entry->setFont(big);
    m_entry->setPlaceholderText(QStringLiteral("Código, linha digitável ou valor pago"));
    m_kinds = new QComboBox(central);
    m_kinds->setObjectName(QStringLiteral("cmbTipoGuia"));
    m_kinds->setMinimumWidth(300);
    QFont mid = m_kinds->font();
    mid.setPointSize(12);
    m_kinds->setFont(mid);
    m_valor = new QLineEdit(central);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setPlaceholderText(QStringLiteral("0,00"));
    m_valor->setAlignment(Qt::AlignRight);
    m_valor->setFont(mid);
    m_valor->setMaximumWidth(160);
    auto* ldg = new QPushButton(QStringLiteral("Linha &Digitável"), central);
    ldg->setObjectName(QStringLiteral("cmdLdg"));
    ldg->setFocusPolicy(Qt::NoFocus);
    connect(ldg, &QPushButton::clicked, this, &frmFrente::typedLine);
    auto* avulso = new QPushButton(QStringLiteral("A&vulso"), central);
    avulso->setObjectName(QStringLiteral("cmdAvulso"));
    avulso->setFocusPolicy(Qt::NoFocus);
    connect(avulso, &QPushButton::clicked, this, &frmFrente::avulso);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(label(QStringLiteral("lblCodigo"), QStringLiteral("Código:"), central, 13));
    entryRow->addWidget(m_entry, 1);
    entryRow->addWidget(ldg);
    entryRow->addWidget(avulso);
    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(
        label(QStringLiteral("lblTipo"), QStringLiteral("Tipo de guia:"), central, 12));
    kindRow->addWidget(m_kinds, 1);
    kindRow->addWidget(label(QStringLiteral("lblValor"), QStringLiteral("Valor:"), central, 12));
    kindRow->addWidget(m_valor);

    m_soma = new QTreeWidget(central);
    m_soma->setObjectName(QStringLiteral("lstSoma"));
    m_soma->setRootIsDecorated(false);
    m_soma->setAlternatingRowColors(true);
    m_soma->setFocusPolicy(Qt::NoFocus);
    m_soma->setFont(mid);
    m_soma->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Tipo"),
                             QStringLiteral("Valor"), QStringLiteral("Total"),
                             QStringLiteral("Código de barras"), QStringLiteral("Vencimento"),
                             QStringLiteral("Parcela"), QStringLiteral("Obs")});
    m_soma->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_soma->headerItem()->setTextAlignment(2, Qt::AlignRight);
    m_soma->headerItem()->setTextAlignment(3, Qt::AlignRight);
    // An empty sum says what the counter expects instead of showing a blank list.
    auto* empty = label(QStringLiteral("lblSomaVazia"),
                        QStringLiteral("Passe o leitor no código de barras\nou digite a linha "
                                       "digitável e tecle Enter\n\n"
                                       "+  item sem código      -  valor pago      "
                                       "Enter  grava o pagamento"),
                        central, 15);
    empty->setAlignment(Qt::AlignCenter);
    empty->setStyleSheet(
        QStringLiteral("color: #505a64; border: 2px dashed #b8c0c8; border-radius: 6px;"));
    m_somaStack = new QStackedWidget(central);
    m_somaStack->addWidget(empty);
    m_somaStack->addWidget(m_soma);

    auto* totalCaption =
        label(QStringLiteral("lblTotalCaption"), QStringLiteral("Total do cliente"), central, 13);
    m_total = label(QStringLiteral("lbltotalConta"), QStringLiteral("Calcular"), central, 28, true);
    m_total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_troco = label(QStringLiteral("lblTroco"), QStringLiteral("A Pagar"), central, 20, true);
    m_troco->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* totals = new QHBoxLayout;
    totals->addWidget(totalCaption);
    totals->addStretch();
    totals->addWidget(m_total);

    auto* left = new QVBoxLayout;
    left->addLayout(entryRow);
    left->addLayout(kindRow);
    left->addWidget(m_somaStack, 1);
    left->addLayout(totals);
    left->addWidget(m_troco);
    auto* body = new QHBoxLayout;
    body->addLayout(left, 3);
    body->addWidget(buildLancados(central), 2);

    auto* layout = new QVBoxLayout(central);
    layout->addWidget(buildTopBar(central));
    layout->addWidget(m_impressora);
    layout->addLayout(body, 1);

    connect(m_entry, &QLineEdit::textChanged, this, &frmFrente::onEntryChanged);
    resize(1280, 760);
}

void frmFrente::buildMenus() {
    auto add = [this](QMenu* menu, const QString& name, const QString& text, auto slot) {
        QAction* a = menu->addAction(text);
        a->setObjectName(name);
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    QMenu* caixa = menuBar()->addMenu(QStringLiteral("&Caixa"));
    add(caixa, QStringLiteral("mnuEncerrar"), QStringLiteral("Encerrar Movimento (F4)"),
        &frmFrente::encerrar);
    add(caixa, QStringLiteral("mnuReabrir"), QStringLiteral("Reabrir Movimento (F5)"),
        &frmFrente::reabrir);
    add(caixa, QStringLiteral("mnuRecebidas"), QStringLiteral("Contas Recebidas (F7)"),
        &frmFrente::recebidas);
    caixa->addSeparator();
    add(caixa, QStringLiteral("mnuReautenticar"), QStringLiteral("Reautenticar Último Pagamento"),
        &frmFrente::reautenticarUltimo);
    add(caixa, QStringLiteral("mnuReautNumero"), QStringLiteral("Reautenticar por Número..."),
        &frmFrente::reautenticarNumero);
    caixa->addSeparator();
    add(caixa, QStringLiteral("mnulogoff"), QStringLiteral("Trocar Operador"),
        [this] { emit logoff(); });
    add(caixa, QStringLiteral("mnuSair"), QStringLiteral("Sair (ESC)"), [this] { close(); });
    QMenu* soma = menuBar()->addMenu(QStringLiteral("&Soma"));
    add(soma, QStringLiteral("mnuExcluiUltimo"), QStringLiteral("Exclui último Item (F2)"),
        &frmFrente::removeLast);
    add(soma, QStringLiteral("mnuLimpar"), QStringLiteral("Limpa Soma (F3)"),
        &frmFrente::limparSoma);
    add(soma, QStringLiteral("mnuLimpaIdent"), QStringLiteral("Limpar Identificação (F8)"),
        &frmFrente::limparIdentificacao);
    add(soma, QStringLiteral("mnuRemove"), QStringLiteral("Excluir Item..."),
        &frmFrente::removeByNumber);
    soma->addSeparator();
    add(soma, QStringLiteral("mnuGravar"), QStringLiteral("Salvar Soma (F11)"),
        [this] { m_session.salvarSoma(); });
    add(soma, QStringLiteral("mnuCarregar"), QStringLiteral("Carregar Soma (F12)"),
        &frmFrente::carregarSoma);
    soma->addSeparator();
    add(soma, QStringLiteral("mnuLdg"), QStringLiteral("Linha Digitável..."),
        &frmFrente::typedLine);
    add(soma, QStringLiteral("mnuAvulso"), QStringLiteral("Item Avulso..."), &frmFrente::avulso);
    QMenu* tools = menuBar()->addMenu(QStringLiteral("&Ferramentas"));
    tools->setObjectName(QStringLiteral("mnuFerramentas"));
    add(tools, QStringLiteral("mnuJuros"), QStringLiteral("Juros por Dia/Mês (F6)"),
        &frmFrente::juros);
    add(tools, QStringLiteral("mnuCalculadora"), QStringLiteral("Calculadora (F9)"),
        &frmFrente::calculadora);
    add(tools, QStringLiteral("mnuFeriados"), QStringLiteral("Feriados..."), &frmFrente::feriados);
    add(tools, QStringLiteral("mnuExpCebi"), QStringLiteral("Arquivos Bancários..."), [this] {
        openAdmin(Act::ArquivosBanco, QStringLiteral("Arquivos Bancários"), [this] {
            return std::make_unique<frmExportar>(m_ctx, m_session.day().movimento().ID,
                                                 m_session.day().movimento().MDATA, this);
        });
    });
    add(tools, QStringLiteral("mnuAutenticar"), QStringLiteral("Autenticar Documento..."), [this] {
        openAdmin(Act::AutenticarAvulso, QStringLiteral("Autenticar Documento"),
                  [this] { return std::make_unique<frmAutenticar>(m_ctx, this); });
    });
    QMenu* admin = menuBar()->addMenu(QStringLiteral("&Administração"));
    admin->setObjectName(QStringLiteral("mnuAdministracao"));
    add(admin, QStringLiteral("mnuItens"), QStringLiteral("Tipos de Guia..."), [this] {
        openAdmin(Act::TiposGuia, QStringLiteral("Tipos de Guia"),
                  [this] { return std::make_unique<frmCodBarra>(m_ctx, this); });
    });
    add(admin, QStringLiteral("mnuuser"), QStringLiteral("Usuários..."), [this] {
        openAdmin(Act::Usuarios, QStringLiteral("Usuários"),
                  [this] { return std::make_unique<frmUsuarios>(m_ctx, this); });
    });
    add(admin, QStringLiteral("mnuParam"), QStringLiteral("Opções..."), [this] {
        openAdmin(Act::Opcoes, QStringLiteral("Opções"),
                  [this] { return std::make_unique<frmOpcoes>(m_ctx, this); });
    });
    admin->addSeparator();
    add(admin, QStringLiteral("mnuAltSkin"), QStringLiteral("Aparência..."), [this] {
        openAdmin(Act::Aparencia, QStringLiteral("Aparência"),
                  [this] { return std::make_unique<frmSkin>(m_ctx, this); });
    });
    add(admin, QStringLiteral("mnuAtualiza"), QStringLiteral("Atualização..."), [this] {
        openAdmin(Act::PastaAtualizacao, QStringLiteral("Atualização"),
                  [this] { return std::make_unique<frmAtualiza>(m_ctx, this); });
    });
    CashDayMenu::build(
        menuBar(), m_ctx, [this] { return m_session.day().movimento(); },
        [this] {
            m_session.day().reload();
            refreshAll();
            m_entry->setFocus();
        },
        this);
    ReportsMenu::build(
        menuBar(), m_ctx, [this] { return m_session.day().movimento().MDATA; }, this);
    QMenu* corr = menuBar()->addMenu(QStringLiteral("C&orreções"));
    // Each asks for an administrator first; the counter is redrawn after a correction.
    const auto guarded = [this](auto open, const QString& title) {
        return [this, open, title] {
            if (open(m_ctx, m_session.printer(), title, this))
                refreshAll();
        };
    };
    add(corr, QStringLiteral("mnuCorrige"), QStringLiteral("Corrigir ou Estornar Recebimento..."),
        guarded(&frmCorrigeGuia::abrir, QStringLiteral("Corrigir ou Estornar Recebimento")))
        ->setEnabled(!m_consulta);
    add(corr, QStringLiteral("mnuAlt_item"), QStringLiteral("Alterar Item Recebido..."),
        guarded(&frmCorrigeGuia::abrir, QStringLiteral("Alterar Item Recebido")))
        ->setEnabled(!m_consulta);
    add(corr, QStringLiteral("mnureverter"), QStringLiteral("Reverter Estorno..."),
        guarded(&ReversalUndoDialog::abrir, QStringLiteral("Reverter Estorno")))
        ->setEnabled(!m_consulta);
    add(corr, QStringLiteral("mnuestornos"), QStringLiteral("Estornos e Alterações..."),
        [this] { frmExbi(m_ctx, this).exec(); });
}

void frmFrente::openAdmin(Act act, const QString& guardTitle,
                          const std::function<std::unique_ptr<QDialog>()>& make) {
    if (!AdminGuard::ask(m_ctx, act, guardTitle))
        return; // a wrong password opens nothing, silently
    {
        const AuthorizedScope allowed(m_ctx);
        make()->exec();
    }
    fillKinds(); // kinds and settings may have changed
    refreshAll();
    m_entry->setFocus();
}

void frmFrente::buildRibbon() {
    // Names listed here and not (yet) in the menus add nothing: a menu entry with one of these
    // names shows on the ribbon by itself.
    m_ribbon = new CommandRibbon(this, centralWidget());
    const int dia = m_ribbon->addGroup(QStringLiteral("Dia"));
    for (const char* n :
         {"mnuEncerrar", "mnuReabrir", "mnuRecebidas", "mnuReautenticar", "mnuReautNumero"})
        m_ribbon->addCommand(dia, QLatin1String(n));
    const int caixa = m_ribbon->addGroup(QStringLiteral("Lançamentos"));
    for (const char* n :
         {"mnuLanca", "mnuSangria", "mnuPagtos", "mnuSuprimentos", "mnuConferir", "mnuConftemp"})
        m_ribbon->addCommand(caixa, QLatin1String(n));
    const int soma = m_ribbon->addGroup(QStringLiteral("Soma"));
    for (const char* n : {"mnuExcluiUltimo", "mnuLimpar", "mnuLimpaIdent", "mnuRemove", "mnuGravar",
                          "mnuCarregar", "mnuLdg", "mnuAvulso"})
        m_ribbon->addCommand(soma, QLatin1String(n));
    const int tools = m_ribbon->addGroup(QStringLiteral("Ferramentas"));
    for (const char* n : {"mnuJuros", "mnuCalculadora", "mnuFeriados"})
        m_ribbon->addCommand(tools, QLatin1String(n));
    const int corr = m_ribbon->addGroup(QStringLiteral("Correções"));
    for (const char* n : {"mnuCorrige", "mnuAlt_item", "mnureverter", "mnuestornos"})
        m_ribbon->addCommand(corr, QLatin1String(n));
    const int adm = m_ribbon->addGroup(QStringLiteral("Administração"));
    for (const char* n : {"mnuItens", "mnuuser", "mnuExpCebi", "mnuParam", "mnuAltSkin",
                          "mnuAtualiza", "mnuAutenticar", "mnulogoff"})
        m_ribbon->addCommand(adm, QLatin1String(n));
    m_ribbon->setCurrentIndex(soma);
    auto* strip = new QHBoxLayout;
    strip->addWidget(m_ribbon, 1);
    if (QToolButton* sair =
            m_ribbon->standaloneCommand(QStringLiteral("mnuSair"), centralWidget(),
                                        QStringLiteral("Sair"), QStringLiteral("ESC")))
        strip->addWidget(sair, 0, Qt::AlignBottom);
    static_cast<QVBoxLayout*>(centralWidget()->layout())->addLayout(strip);
}

void frmFrente::setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer) {
    m_authPrinter = printer;
    if (printer)
        printer->autenticados = [this](const QList<int>& stamped, const QList<int>& missed) {
            stampsMissed(stamped, missed);
        };
    if (!worker)
        return;
    connect(worker, &PrinterWorker::aguardandoDocumento, this, [this](const QString& texto) {
        printerLine(texto.isEmpty() ? QString() : QStringLiteral("Insira o documento: ") + texto,
                    true);
    });
    connect(worker, &PrinterWorker::aviso, this,
            [this](const QString& title, const QString& text, int icon) {
                m_ctx.dialogs.message(title, text, DialogIcon(icon), DialogButtons::Ok);
            });
}

void frmFrente::printerLine(const QString& text, bool waiting) {
    m_impressora->setText(text);
    m_impressora->setStyleSheet(waiting ? QStringLiteral("background: #fff3b0; color: #3a2c00;")
                                        : QStringLiteral("background: #ffd8c8; color: #6a1400;"));
    m_impressora->setVisible(!text.isEmpty());
}

void frmFrente::stampsMissed(const QList<int>& stamped, const QList<int>& missed) {
    // Every document still without a stamp stays named until one re-stamp covers it.
    for (int a : stamped)
        m_unstamped.remove(a);
    for (int a : missed)
        m_unstamped.insert(a);
    if (m_unstamped.isEmpty()) {
        printerLine(QString(), false);
        return;
    }
    QList<int> sorted(m_unstamped.begin(), m_unstamped.end());
    std::sort(sorted.begin(), sorted.end());
    QStringList n;
    for (int a : sorted)
        n << QStringLiteral("%1").arg(a, 4, 10, QLatin1Char('0'));
    printerLine(QStringLiteral("Documentos sem autenticação: %1. Quando a autenticadora voltar: "
                               "Caixa > Reautenticar.")
                    .arg(n.join(QStringLiteral(", "))),
                false);
}

void frmFrente::tick() {
    const QDateTime now = m_ctx.clock.now();
    m_dia->setText(now.toString(QStringLiteral("dd/MM/yyyy")));
    m_hora->setText(QStringLiteral("Agora: ") + now.toString(QStringLiteral("hh:mm:ss AP")));
    // A working date that is not today must not be missed.
    const bool past = m_ctx.workingDate.isValid() && m_ctx.workingDate != now.date();
    m_dataCaixa->setText(QStringLiteral("Caixa de ") + DateUtil::br(m_ctx.workingDate) +
                         (past ? QStringLiteral(" (não é hoje)") : QString()));
    m_dataCaixa->setStyleSheet(past ? QStringLiteral("background: #c0392b; color: white;")
                                    : QStringLiteral("color: #1f3a5f;"));
}

bool frmFrente::fillKinds() {
    m_kinds->clear();
    for (const GuideKind& k : m_session.kinds())
        m_kinds->addItem(k.descricao, k.idcod);
    m_kinds->setCurrentIndex(-1);
    m_kindsAreEntry = true;
    return m_kinds->count() > 0;
}

void frmFrente::showKinds(const GuideKinds& kinds, bool selectFirst) {
    m_kinds->clear();
    for (const GuideKind& k : kinds)
        m_kinds->addItem(k.descricao, k.idcod);
    m_kinds->setCurrentIndex(selectFirst && !kinds.isEmpty() ? 0 : -1);
    m_kindsAreEntry = false;
}

void frmFrente::refreshAll() {
    refreshList();
    refreshLancados();
    refreshStatus();
}

void frmFrente::refreshList() {
    const CustomerList& list = m_session.list();
    m_soma->clear();
    for (int r = 0; r < list.size(); ++r) {
        QStringList cols;
        for (int c = 0; c < CustomerList::kColumns; ++c)
            cols << list.text(r, CustomerList::Column(c));
        auto* item = new QTreeWidgetItem(cols);
        item->setTextAlignment(2, Qt::AlignRight);
        item->setTextAlignment(3, Qt::AlignRight);
        m_soma->addTopLevelItem(item);
        m_soma->scrollToItem(item);
    }
    m_somaStack->setCurrentIndex(list.isEmpty() ? 0 : 1);
    if (!list.isEmpty())
        m_lastChange.clear();
    m_total->setText(list.isEmpty() ? QStringLiteral("Calcular") : list.total().formatCurrency());
    m_total->setStyleSheet(list.isEmpty() ? QStringLiteral("color: #8a949e") : QString());
    m_troco->setText(list.isEmpty() && !m_lastChange.isEmpty() ? m_lastChange
                                                               : m_session.paymentLabel());
}

void frmFrente::refreshLancados() {
    m_lancadoTitle->setText(m_session.lancadosHeading());
    m_lancadoModel->reload();
    const auto r = m_session.resumoLancados();
    m_dayCount = r ? r->quantidade : 0;
    m_dayTotal = r ? r->total : Money();
    refreshDayTotals();
}

void frmFrente::refreshDayTotals() {
    m_dayTotals->setText(
        QStringLiteral("%1 %2    Total do dia: %3")
            .arg(m_dayCount)
            .arg(m_dayCount == 1 ? QStringLiteral("recebimento") : QStringLiteral("recebimentos"))
            .arg(m_dayTotal.formatCurrency()));
}

void frmFrente::refreshStatus() {
    m_statusTimer->stop();
    m_status->setText(m_consulta ? QStringLiteral("CONSULTA - ") + m_session.day().statusLabel()
                                 : m_session.day().statusLabel());
    m_status->setStyleSheet(m_session.day().aberto() ? kReady : kAlert);
    m_user->setText(QStringLiteral("Operador: ") + m_ctx.userName);
}

void frmFrente::statusLine(const QString& text) {
    // A scan that added nothing still gets a word and a sound, so the cashier knows it was seen.
    m_status->setText(text);
    m_status->setStyleSheet(
        QStringLiteral("color: white; background: #b00000; padding: 2px 6px; font-size: 13pt;"));
    QApplication::beep();
    m_statusTimer->start(8000);
}

bool frmFrente::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    auto* w = qobject_cast<QWidget*>(watched);
    // Dialogs and popups keep their own keys; every key inside this window comes here first.
    if (!w || w->window() != this)
        return false;
    auto* ke = static_cast<QKeyEvent*>(event);
    if (handleKey(ke))
        return true;
    // Typing while the focus is on a list goes to the entry, so a scan is never lost there.
    const bool onInput = w == m_entry || w == m_valor || w == m_kinds || m_kinds->isAncestorOf(w);
    if (!onInput && !ke->text().isEmpty() && ke->text().at(0).isPrint() && m_entry->isEnabled()) {
        m_entry->setFocus();
        QKeyEvent copy(ke->type(), ke->key(), ke->modifiers(), ke->text());
        QApplication::sendEvent(m_entry, &copy);
        return true;
    }
    return false;
}

bool frmFrente::handleKey(QKeyEvent* event) {
    const auto trigger = [this](const char* name) {
        if (QAction* a = action(name))
            a->trigger(); // does nothing while the action is disabled
        return true;
    };
    QWidget* focus = QApplication::focusWidget();
    switch (event->key()) {
    case Qt::Key_Plus:
        if (m_consulta)
            return true;
        m_entry->clear();
        if (!m_kindsAreEntry)
            fillKinds();
        m_kinds->setFocus();
        if (m_ctx.settings.tecla_mais == 1)
            m_kinds->showPopup();
        return true;
    case Qt::Key_Minus:
        // The dashes of a typed line are part of the line, not the amount key.
        if (focus == m_entry && CounterSession::pareceInicioDeLinha(m_entry->text()))
            return false;
        tender();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focus == m_kinds) {
            m_valor->setFocus();
            m_valor->selectAll();
        } else if (focus == m_valor) {
            addTypedItem();
        } else {
            enter();
        }
        return true;
    case Qt::Key_F2:
        return trigger("mnuExcluiUltimo");
    case Qt::Key_F3:
        return trigger("mnuLimpar");
    case Qt::Key_F4:
        return trigger("mnuEncerrar");
    case Qt::Key_F5:
        return trigger("mnuReabrir");
    case Qt::Key_F6:
        return trigger("mnuJuros");
    case Qt::Key_F7:
        return trigger("mnuRecebidas");
    case Qt::Key_F8:
        return trigger("mnuLimpaIdent");
    case Qt::Key_F9:
        return trigger("mnuCalculadora");
    case Qt::Key_F11:
        return trigger("mnuGravar");
    case Qt::Key_F12:
        return trigger("mnuCarregar");
    case Qt::Key_Escape:
        return trigger("mnuSair");
    default:
        break;
    }
    return false;
}

void frmFrente::onEntryChanged(const QString& text) {
    const qint64 now = m_keyClock.elapsed();
    if (text.isEmpty()) {
        m_handTyped = false;
        m_lastChangeAt = -1;
        return;
    }
    // One pause longer than a scanner ever makes, and the entry is being typed by hand: it is
    // read on Enter, as a code or as a typed line.
    if (m_lastChangeAt >= 0 && now - m_lastChangeAt > m_scannerKeyGapMs)
        m_handTyped = true;
    m_lastChangeAt = now;
    if (text.size() == 44 && !m_handTyped && !m_reading)
        Leitura_codigo_barras();
}

void frmFrente::Leitura_codigo_barras() {
    read(m_entry->text(), false);
}

void frmFrente::read(const QString& text, bool typedLine) {
    if (m_consulta)
        return;
    m_reading = true;
    {
        // Whatever the read opens ignores the keys the scanner sends right after the code.
        DialogKeyGuard guard(m_ctx.dialogs, m_scannerEnterMs);
        showRead(settle(typedLine ? m_session.lerLinha(text) : m_session.ler(text)));
    }
    m_reading = false;
    m_valor->clear();
    m_entry->setFocus();
    m_lastScan.start();
}

CounterSession::ReadResult frmFrente::settle(CounterSession::ReadResult r) {
    // An overdue guide waits for the operator's consent before anything is added.
    while (r.precisaConsentimento) {
        const bool yes =
            m_ctx.dialogs.notice(OverdueHandler::kFormGuia, OverdueHandler::kCaptionGuia,
                                 OverdueHandler::linhasGuia(r.vencimento, r.valor),
                                 DialogButtons::YesNo) == DialogAnswer::Yes;
        r = m_session.continuar(yes);
    }
    return r;
}

void frmFrente::refreshNetwork() {
    // Only the link the start-up made: the screen never makes one that would wait in its thread.
    if (!m_ctx.rede || !m_ctx.rede->configurada())
        return;
    const NetworkStatus::Situacao s = NetworkStatus::consultar(m_ctx);
    const QDateTime now = m_ctx.clock.now();
    m_redeAtrasada = NetworkStatus::atrasada(s, now);
    if (m_ctx.settings.rede == 1) {
        m_rede->setText(s.ativa ? QStringLiteral("REDE: %1 PENDENTE(S)").arg(s.pendentes)
                                : QStringLiteral("REDE INATIVA"));
        m_rede->setVisible(NetworkStatus::mostrarRotulo(s, now));
    }
    if (m_reading || !m_session.list().isEmpty() || m_session.aguardandoConsentimento())
        return; // told between customers
    for (const QString& text : m_ctx.rede->novidades()) {
        const DialogKeyGuard guard(m_ctx.dialogs, m_scannerEnterMs);
        m_ctx.dialogs.warn(QStringLiteral("Rede"), text);
    }
}

void frmFrente::showRead(const CounterSession::ReadResult& r) {
    if (r.networkChecked)
        m_rede->setVisible(r.showNetworkLabel || m_redeAtrasada);
    if (r.clearField || r.accepted)
        m_entry->clear();
    if (r.accepted)
        fillKinds(); // the append resets the kind list
    else if (r.clearKind)
        m_kinds->setCurrentIndex(-1);
    const QString status = statusText(r.resultado);
    if (status.isEmpty())
        refreshStatus();
    else
        statusLine(status);
    refreshList();
}

void frmFrente::enter() {
    if (m_consulta)
        return;
    // The scanner's own Enter right after a code records nothing.
    if (m_lastScan.isValid() && m_lastScan.elapsed() < m_scannerEnterMs)
        return;
    const QString text = m_entry->text().trimmed();
    if (text.size() == 44 && allDigits(text)) { // a code keyed by hand
        read(text, false);
        return;
    }
    if (CounterSession::pareceLinhaDigitavel(text)) {
        read(text, true);
        return;
    }
    if (m_session.list().isEmpty())
        return;
    // An amount typed is the amount paid, as "-" takes it; the payment is recorded only when
    // it covers the total.
    if (!text.isEmpty() && (!tender() || !m_session.mayRecord()))
        return;
    record();
}

void frmFrente::record() {
    const QString change = m_session.paymentLabel();
    const auto rows = m_session.gravar();
    if (rows) {
        m_entry->clear();
        m_valor->clear();
        m_lastChange = change.startsWith(QLatin1String("Troco")) ? change : QString();
        QList<clsRecebimentos::Lancado> added;
        for (const RecordedReceipt& r : *rows) {
            added.append({r.idrecebe, r.autentica, r.item.descricao, r.item.valor});
            ++m_dayCount;
            m_dayTotal += r.item.valor;
        }
        m_lancadoModel->addRecorded(added);
        m_lancado->scrollToTop();
        refreshDayTotals();
        refreshList();
        refreshStatus();
    }
    m_entry->setFocus();
}

bool frmFrente::tender() {
    // "-" on an empty screen only says there is nothing to pay.
    const bool bare = m_entry->text().trimmed().isEmpty() && m_session.list().isEmpty();
    QString why;
    const auto paid =
        bare ? std::optional<Money>(Money()) : Money::parseTyped(m_entry->text(), &why);
    if (!paid || m_session.tender(*paid).state == ChangeResult::State::AmountInvalid) {
        // A fraction of a centavo is named; anything else is not a number.
        m_ctx.dialogs.warn(kAviso, Money::parse(m_entry->text()) && !paid
                                       ? why
                                       : QStringLiteral("O valor informado não é um número!!"));
        m_entry->selectAll();
        return false;
    }
    m_entry->clear();
    m_lastChange.clear();
    refreshList();
    return true;
}

void frmFrente::addTypedItem() {
    if (m_consulta)
        return;
    if (m_kinds->currentIndex() < 0) {
        m_ctx.dialogs.warn(kAviso, QStringLiteral("Selecione o tipo de guia!!"));
        m_kinds->setFocus();
        return;
    }
    if (m_session.adicionarDigitado(m_kinds->currentData().toInt(), m_kinds->currentText(),
                                    Money::parseTyped(m_valor->text()))) {
        m_valor->clear();
        fillKinds();
        refreshList();
        m_entry->setFocus();
    }
}

void frmFrente::removeLast() {
    if (m_session.removerUltimo())
        refreshList();
}

void frmFrente::removeByNumber() {
    const auto answer = m_ctx.dialogs.input(QStringLiteral("Excluir Item"),
                                            QStringLiteral("Informe o número do item a excluir?"),
                                            false, QString());
    if (!answer)
        return;
    const auto r = m_session.removerNumero(*answer);
    if (r != CustomerList::RemoveResult::Removed) {
        m_ctx.dialogs.critical(kAviso, CustomerList::removeMessage(r));
        return;
    }
    refreshList();
}

void frmFrente::limparSoma() {
    if (m_session.list().isEmpty())
        return;
    if (!m_ctx.dialogs.ask(kAviso, QStringLiteral("Deseja realmente limpar a soma?")))
        return;
    m_session.limparSoma();
    refreshList();
}

void frmFrente::limparIdentificacao() {
    m_entry->clear();
    m_valor->clear();
    fillKinds();
    m_rede->hide();
    m_entry->setFocus();
}

void frmFrente::carregarSoma() {
    m_session.carregarSoma();
    refreshList();
}

void frmFrente::encerrar() {
    if (m_consulta)
        return;
    CashDay& day = m_session.day();
    if (!day.podeEncerrar())
        return;
    if (!m_ctx.dialogs.ask(kAviso, CashDay::kPerguntaEncerrar)) {
        m_ctx.dialogs.info(kAviso, CashDay::kCancelado);
        return;
    }
    if (day.encerrar()) {
        if (m_ctx.dialogs.ask(kAviso, CashDay::kPerguntaCupomEncerramento))
            day.imprimirEncerramento();
        m_ctx.dialogs.info(kAviso, CashDay::kEncerrado);
    }
    refreshStatus();
}

void frmFrente::reabrir() {
    if (m_consulta)
        return;
    CashDay& day = m_session.day();
    if (!day.podeReabrir() || !m_ctx.dialogs.ask(kAviso, CashDay::kPerguntaReabrir))
        return;
    if (day.reabrir() && m_ctx.dialogs.ask(kAviso, CashDay::kPerguntaCupomReabertura))
        day.imprimirReabertura();
    refreshStatus();
}

void frmFrente::recebidas() {
    // The day's list for reading; the screen still takes every key first.
    m_lancado->setFocus();
    if (!m_lancado->currentIndex().isValid() && m_lancadoModel->rowCount() > 0)
        m_lancado->setCurrentIndex(m_lancadoModel->index(0, 0));
}

void frmFrente::reautenticarUltimo() {
    m_session.reautenticarUltimo();
    m_entry->setFocus();
}

void frmFrente::reautenticarNumero() {
    const auto answer =
        m_ctx.dialogs.input(QStringLiteral("Reautenticar"),
                            QStringLiteral("Número da autenticação:"), false, QString());
    if (!answer || answer->trimmed().isEmpty())
        return;
    bool ok = false;
    const int n = answer->trimmed().toInt(&ok);
    if (!ok || n <= 0) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("O valor informado não é um número!!"));
        return;
    }
    m_session.reautenticar(n);
    m_entry->setFocus();
}

void frmFrente::typedLine() {
    if (m_consulta)
        return;
    frmLdg dlg(m_ctx.dialogs, this);
    if (dlg.exec() == QDialog::Accepted) {
        m_entry->clear();
        m_entry->setText(dlg.barcode()); // 44 digits: read exactly as a scanned code
    }
    m_entry->setFocus();
}

void frmFrente::avulso() {
    if (m_consulta)
        return;
    frmAvulso dlg(m_ctx, this);
    if (dlg.exec() == QDialog::Accepted) {
        settle(m_session.somaAvulso(dlg.item()));
        refreshList();
    }
    m_entry->setFocus();
}

void frmFrente::juros() {
    frmJuros dlg(m_ctx, this);
    dlg.exec();
    m_entry->setFocus();
}

void frmFrente::calculadora() {
    CalculatorDialog dlg(this);
    connect(&dlg, &CalculatorDialog::resultado, this,
            [this](const QString& v) { m_valor->setText(v); });
    dlg.exec();
    m_entry->setFocus();
}

void frmFrente::feriados() {
    openAdmin(Act::Feriados, QStringLiteral("Feriados"),
              [this] { return std::make_unique<frmFeriados>(m_ctx, this); });
}

void frmFrente::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!m_session.list().isEmpty()) {
        if (m_ctx.dialogs.ask(kAviso, QStringLiteral("Há itens na soma que não foram gravados. "
                                                     "Deseja sair assim mesmo?")))
            event->accept();
        return;
    }
    // Leaving is asked, and going back to the date screen (another operator or day) offered.
    switch (m_ctx.dialogs.message(QStringLiteral("Sair"),
                                  QStringLiteral("Deseja sair do Tolvane?\n\n"
                                                 "Sim: fecha o programa.\n"
                                                 "Não: volta à tela de data (outro operador "
                                                 "ou outro dia).\n"
                                                 "Cancelar: continua no caixa."),
                                  DialogIcon::Question, DialogButtons::YesNoCancel)) {
    case DialogAnswer::Yes:
        event->accept();
        break;
    case DialogAnswer::No:
        emit logoff();
        break;
    default:
        break;
    }
}
