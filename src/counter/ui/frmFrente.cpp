#include "frmFrente.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "CalculatorDialog.h"
#include "CashDayMenu.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DialogPort.h"
#include "OverdueHandler.h"
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
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
const QString kAviso = QStringLiteral("Aviso");

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
} // namespace

frmFrente::frmFrente(CounterSession& session, bool consulta, QWidget* parent)
    : QMainWindow(parent), m_session(session), m_ctx(session.ctx()), m_consulta(consulta) {
    setObjectName(QStringLiteral("frmFrente"));
    setWindowTitle(QStringLiteral("Tolvane - Caixa"));
    buildUi();
    buildMenus();
    auto* timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("tmrDiaHora"));
    connect(timer, &QTimer::timeout, this, &frmFrente::tick);
    timer->start(1000);
    tick();
    fillKinds();
    if (m_consulta) {
        // A past day is only looked at: nothing can be added, recorded, closed or reopened here.
        setWindowTitle(QStringLiteral("Tolvane - Caixa (consulta)"));
        for (QWidget* w : {static_cast<QWidget*>(m_entry), static_cast<QWidget*>(m_kinds),
                           static_cast<QWidget*>(m_valor)})
            w->setEnabled(false);
    }
    refreshAll();
    m_entry->setFocus();
}

void frmFrente::keyPressEvent(QKeyEvent* event) {
    if (!handleKey(event->key()))
        QMainWindow::keyPressEvent(event);
}

void frmFrente::buildUi() {
    auto* central = new QWidget(this);
    setCentralWidget(central);

    m_status = label(QStringLiteral("lblStatus"), QString(), central, 14, true);
    m_rede =
        label(QStringLiteral("lblStatusRede"), QStringLiteral("REDE INATIVA"), central, 0, true);
    m_rede->setStyleSheet(QStringLiteral("color: #b00000"));
    m_rede->hide();
    m_user = label(QStringLiteral("lbluser"), QString(), central);
    m_dia = label(QStringLiteral("lblDia"), QString(), central);
    m_hora = label(QStringLiteral("lblHora"), QString(), central);
    auto* top = new QHBoxLayout;
    top->addWidget(m_status);
    top->addWidget(m_rede);
    top->addStretch();
    top->addWidget(m_user);
    top->addSpacing(20);
    top->addWidget(m_dia);
    top->addSpacing(10);
    top->addWidget(m_hora);

    m_entry = new QLineEdit(central);
    m_entry->setObjectName(QStringLiteral("txtValorCodBarra"));
    m_entry->setMaxLength(60);
    QFont big = m_entry->font();
    big.setPointSize(16);
    m_entry->setFont(big);
    m_entry->setPlaceholderText(QStringLiteral("Código de barras, valor ou valor pago"));
    m_kinds = new QComboBox(central);
    m_kinds->setObjectName(QStringLiteral("cmbTipoGuia"));
    m_kinds->setMinimumWidth(260);
    m_valor = new QLineEdit(central);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setPlaceholderText(QStringLiteral("0,00"));
    m_valor->setMaximumWidth(140);
    auto* ldg = new QPushButton(QStringLiteral("Linha &Digitável"), central);
    ldg->setObjectName(QStringLiteral("cmdLdg"));
    ldg->setFocusPolicy(Qt::NoFocus);
    connect(ldg, &QPushButton::clicked, this, &frmFrente::typedLine);
    auto* avulso = new QPushButton(QStringLiteral("A&vulso"), central);
    avulso->setObjectName(QStringLiteral("cmdAvulso"));
    avulso->setFocusPolicy(Qt::NoFocus);
    connect(avulso, &QPushButton::clicked, this, &frmFrente::avulso);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(label(QStringLiteral("lblCodigo"), QStringLiteral("Código:"), central));
    entryRow->addWidget(m_entry, 1);
    entryRow->addWidget(ldg);
    entryRow->addWidget(avulso);
    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(label(QStringLiteral("lblTipo"), QStringLiteral("Tipo de guia:"), central));
    kindRow->addWidget(m_kinds, 1);
    kindRow->addWidget(label(QStringLiteral("lblValor"), QStringLiteral("Valor:"), central));
    kindRow->addWidget(m_valor);

    m_soma = new QTreeWidget(central);
    m_soma->setObjectName(QStringLiteral("lstSoma"));
    m_soma->setRootIsDecorated(false);
    m_soma->setAlternatingRowColors(true);
    m_soma->setFocusPolicy(Qt::NoFocus);
    m_soma->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Tipo"),
                             QStringLiteral("Valor"), QStringLiteral("Total"),
                             QStringLiteral("Código de barras"), QStringLiteral("Vencimento"),
                             QStringLiteral("Parcela"), QStringLiteral("Obs")});
    m_soma->header()->setSectionResizeMode(QHeaderView::ResizeToContents);

    m_total = label(QStringLiteral("lbltotalConta"), QStringLiteral("Calcular"), central, 22, true);
    m_total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_troco = label(QStringLiteral("lblTroco"), QStringLiteral("A Pagar"), central, 16, true);
    m_troco->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    m_lancadoTitle = label(QStringLiteral("lblLancado"), QString(), central, 0, true);
    m_lancado = new QTreeWidget(central);
    m_lancado->setObjectName(QStringLiteral("lstLancado"));
    m_lancado->setRootIsDecorated(false);
    m_lancado->setHeaderLabels(
        {QStringLiteral("Aut."), QStringLiteral("Descrição"), QStringLiteral("Valor")});
    m_lancado->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_lancado->setMaximumWidth(380);

    auto* left = new QVBoxLayout;
    left->addLayout(entryRow);
    left->addLayout(kindRow);
    left->addWidget(m_soma, 1);
    left->addWidget(m_total);
    left->addWidget(m_troco);
    auto* right = new QVBoxLayout;
    right->addWidget(m_lancadoTitle);
    right->addWidget(m_lancado, 1);
    auto* body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addLayout(right);

    auto* layout = new QVBoxLayout(central);
    layout->addLayout(top);
    layout->addLayout(body, 1);
    layout->addWidget(buildKeyBar());

    connect(m_entry, &QLineEdit::textChanged, this, &frmFrente::onEntryChanged);
    for (QWidget* w : {static_cast<QWidget*>(m_entry), static_cast<QWidget*>(m_kinds),
                       static_cast<QWidget*>(m_valor)})
        w->installEventFilter(this);
    resize(1180, 680);
}

QWidget* frmFrente::buildKeyBar() {
    auto* bar = new QWidget(this);
    auto* grid = new QGridLayout(bar);
    const QStringList captions = {QStringLiteral("Exclui último Item (F2)"),
                                  QStringLiteral("Limpa Soma (F3)"),
                                  QStringLiteral("Encerrar Mov. (F4)"),
                                  QStringLiteral("Reabrir Cupom (F5)"),
                                  QStringLiteral("Juros por Dia/Mês (F6)"),
                                  QStringLiteral("Contas Recebidas (F7)"),
                                  QStringLiteral("Limpar Identificação (F8)"),
                                  QStringLiteral("Calculadora (F9)"),
                                  QStringLiteral("Salvar Soma (F11)"),
                                  QStringLiteral("Carregar Soma (F12)"),
                                  QStringLiteral("Sair (ESC)")};
    for (int i = 0; i < captions.size(); ++i) {
        auto* l = new QLabel(captions[i], bar);
        l->setObjectName(QStringLiteral("lblTecla%1").arg(i + 1));
        l->setFrameShape(QFrame::StyledPanel);
        l->setAlignment(Qt::AlignCenter);
        grid->addWidget(l, i / 6, i % 6);
    }
    return bar;
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
    caixa->addSeparator();
    add(caixa, QStringLiteral("mnulogoff"), QStringLiteral("Trocar Operador"),
        [this] { emit logoff(); });
    add(caixa, QStringLiteral("mnuSair"), QStringLiteral("Sair (ESC)"), [this] { close(); });
    QMenu* soma = menuBar()->addMenu(QStringLiteral("&Soma"));
    add(soma, QStringLiteral("mnuGravar"), QStringLiteral("Salvar Soma (F11)"),
        [this] { m_session.salvarSoma(); });
    add(soma, QStringLiteral("mnuCarregar"), QStringLiteral("Carregar Soma (F12)"), [this] {
        m_session.carregarSoma();
        refreshAll();
    });
    add(soma, QStringLiteral("mnuRemove"), QStringLiteral("Excluir Item..."),
        &frmFrente::removeByNumber);
    add(soma, QStringLiteral("mnuLimpar"), QStringLiteral("Limpa Soma (F3)"),
        &frmFrente::limparSoma);
    add(soma, QStringLiteral("mnuLimpaIdent"), QStringLiteral("Limpar Identificação (F8)"),
        &frmFrente::limparIdentificacao);
    QMenu* tools = menuBar()->addMenu(QStringLiteral("&Ferramentas"));
    tools->setObjectName(QStringLiteral("mnuFerramentas"));
    add(tools, QStringLiteral("mnuLdg"), QStringLiteral("Linha Digitável..."),
        &frmFrente::typedLine);
    add(tools, QStringLiteral("mnuJuros"), QStringLiteral("Juros por Dia/Mês (F6)"),
        &frmFrente::juros);
    add(tools, QStringLiteral("mnuCalculadora"), QStringLiteral("Calculadora (F9)"),
        &frmFrente::calculadora);
    add(tools, QStringLiteral("mnuFeriados"), QStringLiteral("Feriados..."), &frmFrente::feriados);
    add(tools, QStringLiteral("mnuExpCebi"), QStringLiteral("Arquivos Bancários..."), [this] {
        frmExportar dlg(m_ctx, m_session.day().movimento().ID, m_session.day().movimento().MDATA,
                        this);
        dlg.exec();
        m_entry->setFocus();
    });
    add(tools, QStringLiteral("mnuAutenticar"), QStringLiteral("Autenticar Documento..."),
        [this] { openAdmin({}, [this] { return std::make_unique<frmAutenticar>(m_ctx, this); }); });
    QMenu* admin = menuBar()->addMenu(QStringLiteral("&Administração"));
    admin->setObjectName(QStringLiteral("mnuAdministracao"));
    add(admin, QStringLiteral("mnuItens"), QStringLiteral("Tipos de Guia..."), [this] {
        openAdmin(QStringLiteral("Tipos de Guia"),
                  [this] { return std::make_unique<frmCodBarra>(m_ctx, this); });
    });
    add(admin, QStringLiteral("mnuuser"), QStringLiteral("Usuários..."), [this] {
        openAdmin(QStringLiteral("Usuários"),
                  [this] { return std::make_unique<frmUsuarios>(m_ctx, this); });
    });
    add(admin, QStringLiteral("mnuParam"), QStringLiteral("Opções..."), [this] {
        openAdmin(QStringLiteral("Opções"),
                  [this] { return std::make_unique<frmOpcoes>(m_ctx, this); });
    });
    admin->addSeparator();
    add(admin, QStringLiteral("mnuAltSkin"), QStringLiteral("Aparência..."),
        [this] { openAdmin({}, [this] { return std::make_unique<frmSkin>(m_ctx, this); }); });
    add(admin, QStringLiteral("mnuAtualiza"), QStringLiteral("Atualização..."),
        [this] { openAdmin({}, [this] { return std::make_unique<frmAtualiza>(m_ctx, this); }); });
    CashDayMenu::build(
        menuBar(), m_ctx, [this] { return m_session.day().movimento(); },
        [this] {
            m_session.day().reload();
            refreshAll();
            m_entry->setFocus();
        },
        this);
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

void frmFrente::openAdmin(const QString& guardTitle,
                          const std::function<std::unique_ptr<QDialog>()>& make) {
    if (!guardTitle.isEmpty() && !AdminGuard::ask(m_ctx, guardTitle))
        return; // a wrong password opens nothing, silently
    make()->exec();
    fillKinds(); // kinds and settings may have changed
    refreshAll();
    m_entry->setFocus();
}

void frmFrente::tick() {
    const QDateTime now = m_ctx.clock.now();
    m_dia->setText(now.toString(QStringLiteral("dd/MM/yyyy")));
    m_hora->setText(QStringLiteral("Agora: ") + now.toString(QStringLiteral("hh:mm:ss AP")));
}

bool frmFrente::fillKinds() {
    m_kinds->clear();
    for (const GuideKind& k : m_session.kinds())
        m_kinds->addItem(k.descricao, k.idcod);
    m_kinds->setCurrentIndex(-1);
    return m_kinds->count() > 0;
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
    m_total->setText(list.isEmpty() ? QStringLiteral("Calcular") : list.total().formatCurrency());
    m_troco->setText(m_session.paymentLabel());
}

void frmFrente::refreshLancados() {
    m_lancadoTitle->setText(m_session.lancadosHeading());
    m_lancado->clear();
    for (const auto& l : m_session.lancados()) {
        auto* item =
            new QTreeWidgetItem({QStringLiteral("%1").arg(l.autentica, 4, 10, QLatin1Char('0')),
                                 l.descricao, l.valor.format()});
        item->setData(0, Qt::UserRole, l.idrecebe);
        item->setTextAlignment(2, Qt::AlignRight);
        m_lancado->addTopLevelItem(item);
    }
}

void frmFrente::refreshStatus() {
    m_status->setText(m_consulta ? QStringLiteral("CONSULTA - ") + m_session.day().statusLabel()
                                 : m_session.day().statusLabel());
    m_status->setStyleSheet(m_session.day().aberto() ? QStringLiteral("color: #006000")
                                                     : QStringLiteral("color: #b00000"));
    m_user->setText(QStringLiteral("Operador: ") + m_ctx.userName);
}

bool frmFrente::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* ke = static_cast<QKeyEvent*>(event);
        if (handleKey(ke->key()))
            return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

bool frmFrente::handleKey(int key) {
    const bool onEntry = focusWidget() == m_entry;
    switch (key) {
    case Qt::Key_Plus:
        m_entry->clear();
        m_kinds->setFocus();
        if (m_ctx.settings.tecla_mais == 1 && !m_consulta)
            m_kinds->showPopup();
        return true;
    case Qt::Key_Minus:
        tender();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focusWidget() == m_kinds) {
            m_valor->setFocus();
            m_valor->selectAll();
        } else if (focusWidget() == m_valor) {
            addTypedItem();
        } else if (onEntry) {
            enter();
        }
        return true;
    case Qt::Key_F2:
        removeLast();
        return true;
    case Qt::Key_F3:
        limparSoma();
        return true;
    case Qt::Key_F4:
        encerrar();
        return true;
    case Qt::Key_F5:
        reabrir();
        return true;
    case Qt::Key_F6:
        juros();
        return true;
    case Qt::Key_F7:
        m_lancado->setFocus();
        return true;
    case Qt::Key_F9:
        calculadora();
        return true;
    case Qt::Key_F8:
        limparIdentificacao();
        return true;
    case Qt::Key_F11:
        m_session.salvarSoma();
        return true;
    case Qt::Key_F12:
        if (!m_consulta) {
            m_session.carregarSoma();
            refreshList();
        }
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    default:
        break;
    }
    return false;
}

void frmFrente::onEntryChanged(const QString& text) {
    if (text.size() == 44)
        Leitura_codigo_barras();
}

void frmFrente::Leitura_codigo_barras() {
    if (m_consulta)
        return;
    showRead(settle(m_session.ler(m_entry->text())));
    m_valor->clear();
    m_entry->setFocus();
    m_lastScan.start();
}

CounterSession::ReadResult frmFrente::settle(CounterSession::ReadResult r) {
    // An overdue guide waits for the operator's consent before anything is added.
    while (r.precisaConsentimento) {
        const bool yes =
            m_ctx.dialogs.notice(OverdueHandler::kFormGuia, OverdueHandler::kCaptionGuia,
                                 OverdueHandler::kLinhasGuia,
                                 DialogButtons::YesNo) == DialogAnswer::Yes;
        r = m_session.continuar(yes);
    }
    return r;
}

void frmFrente::showRead(const CounterSession::ReadResult& r) {
    if (r.networkChecked)
        m_rede->setVisible(r.showNetworkLabel);
    if (r.clearField || r.accepted)
        m_entry->clear();
    if (r.clearKind)
        m_kinds->setCurrentIndex(-1);
    refreshList();
}

void frmFrente::enter() {
    const QString text = m_entry->text().trimmed();
    if (CounterSession::pareceLinhaDigitavel(text) && !m_consulta) {
        showRead(settle(m_session.lerLinha(text)));
        m_lastScan.start();
        return;
    }
    if (m_lastScan.isValid() && m_lastScan.elapsed() < m_scannerEnterMs)
        return;
    if (m_consulta || m_session.list().isEmpty())
        return;
    if (m_session.gravar()) {
        m_entry->clear();
        m_valor->clear();
        refreshAll();
    }
    m_entry->setFocus();
}

void frmFrente::tender() {
    // "-" on an empty screen only says there is nothing to pay.
    const bool bare = m_entry->text().trimmed().isEmpty() && m_session.list().isEmpty();
    const auto paid = bare ? std::optional<Money>(Money()) : Money::parse(m_entry->text());
    if (!paid || m_session.tender(*paid).state == ChangeResult::State::AmountInvalid) {
        m_ctx.dialogs.warn(kAviso, QStringLiteral("O valor informado não é um número!!"));
        m_entry->selectAll();
        return;
    }
    m_entry->clear();
    refreshList();
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
                                    Money::parse(m_valor->text()))) {
        m_valor->clear();
        m_kinds->setCurrentIndex(-1);
        refreshList();
        m_entry->setFocus();
    }
}

void frmFrente::removeLast() {
    if (m_session.list().removeLast()) {
        m_session.resetPayment();
        refreshList();
    }
}

void frmFrente::removeByNumber() {
    const auto answer = m_ctx.dialogs.input(QStringLiteral("Excluir Item"),
                                            QStringLiteral("Informe o número do item a excluir?"),
                                            false, QString());
    if (!answer)
        return;
    const auto r = m_session.list().removeByNumber(*answer);
    if (r != CustomerList::RemoveResult::Removed) {
        m_ctx.dialogs.critical(kAviso, CustomerList::removeMessage(r));
        return;
    }
    m_session.resetPayment();
    refreshList();
}

void frmFrente::limparSoma() {
    if (m_session.list().isEmpty())
        return;
    if (!m_ctx.dialogs.ask(kAviso, QStringLiteral("Deseja realmente limpar a soma?")))
        return;
    m_session.list().clear();
    m_session.resetPayment();
    refreshList();
}

void frmFrente::limparIdentificacao() {
    m_entry->clear();
    m_valor->clear();
    m_kinds->setCurrentIndex(-1);
    m_rede->hide();
    m_entry->setFocus();
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

void frmFrente::typedLine() {
    if (m_consulta)
        return;
    frmLdg dlg(m_ctx.dialogs, this);
    if (dlg.exec() == QDialog::Accepted)
        m_entry->setText(dlg.barcode()); // 44 digits: read exactly as a scanned code
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
    frmFeriados dlg(m_ctx, this);
    dlg.exec();
    m_entry->setFocus();
}

void frmFrente::closeEvent(QCloseEvent* event) {
    if (!m_session.list().isEmpty() &&
        !m_ctx.dialogs.ask(
            kAviso,
            QStringLiteral("Há itens na soma que não foram gravados. Deseja sair assim mesmo?"))) {
        event->ignore();
        return;
    }
    event->accept();
}
