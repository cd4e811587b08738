#include "frmOpcoes.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "OptionCatalog.h"
#include "Options.h"
#include "OrdinaryPrinter.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
// A line under a control saying what it does, where its caption is the system's own.
QLabel* note(const char* name, const QString& text) {
    auto* l = new QLabel(text);
    l->setObjectName(QLatin1String(name));
    l->setWordWrap(true);
    QFont f = l->font();
    f.setItalic(true);
    l->setFont(f);
    return l;
}

const QString kProcura = QStringLiteral("Procura destino...");
const char* kModelValues[] = {"bematech", "quattro", "txt"};

QString id(const QString& section, const QString& key) {
    return (section + QLatin1Char('/') + key).toLower();
}

// Texts that end up in files and on the printer: no quotes, backslashes or control characters.
QValidator* plainText(QObject* parent) {
    return new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[^'\"\\\\\\x00-\\x1F]*")), parent);
}

QWidget* page(QWidget* parent, QLayout* content) {
    auto* w = new QWidget(parent);
    auto* v = new QVBoxLayout(w);
    v->addLayout(content);
    v->addStretch();
    return w;
}

} // namespace

frmOpcoes::frmOpcoes(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmOpcoes"));
    setWindowTitle(QStringLiteral("Opções"));
    chooseFolder = [](QWidget* p, const QString& title, const QString& start) {
        return QFileDialog::getExistingDirectory(p, title, start);
    };
    chooseFile = [](QWidget* p, const QString& title, const QString& start) {
        return QFileDialog::getSaveFileName(p, title, start, QStringLiteral("txt (*.txt)"), nullptr,
                                            QFileDialog::DontConfirmOverwrite);
    };
    auto* exportacao = new QTabWidget(this);
    exportacao->setObjectName(QStringLiteral("SSTab2"));
    exportacao->addTab(buildDiretorios(), QStringLiteral("Diretórios"));
    exportacao->addTab(buildParametros(), QStringLiteral("Parâmetros"));
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    m_tabs->addTab(exportacao, QStringLiteral("Exportação"));
    m_tabs->addTab(buildMensagem(), QStringLiteral("Mensagem"));
    m_tabs->addTab(buildContabil(), QStringLiteral("Contábil"));
    m_tabs->addTab(buildImpressao(), QStringLiteral("Impressão"));

    auto* gravarButton = new QPushButton(QStringLiteral("&Gravar"), this);
    gravarButton->setObjectName(QStringLiteral("Command1"));
    connect(gravarButton, &QPushButton::clicked, this, &frmOpcoes::gravar);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    cancelar->setObjectName(QStringLiteral("Command2"));
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(gravarButton);
    buttons->addWidget(cancelar);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addLayout(buttons);
    resize(760, 560);
    setInstalledPrinters(QPrinterInfo::availablePrinterNames());
    load();
}

QLineEdit* frmOpcoes::edit(const char* name, const QString& section, const QString& key) {
    auto* e = new QLineEdit(this);
    e->setObjectName(QLatin1String(name));
    e->setMaxLength(254);
    m_controls.insert(id(section, key), e);
    return e;
}

QCheckBox* frmOpcoes::check(const char* name, const QString& caption, const QString& section,
                            const QString& key) {
    auto* c = new QCheckBox(caption, this);
    c->setObjectName(QLatin1String(name));
    m_controls.insert(id(section, key), c);
    return c;
}

QLineEdit* frmOpcoes::pathRow(QGridLayout* grid, int row, const char* name, const QString& caption,
                              const char* button, bool folder) {
    static const QHash<QString, QPair<QString, QString>> keys = {
        {QStringLiteral("txtcaminho1"), {QStringLiteral("Export"), QStringLiteral("Path1")}},
        {QStringLiteral("txtcaminho_estorno"), {QStringLiteral("Export"), QStringLiteral("Path2")}},
        {QStringLiteral("txtitens_recebimento"),
         {QStringLiteral("Export"), QStringLiteral("Path3")}},
        {QStringLiteral("txtcaminho_remove_item"),
         {QStringLiteral("Export"), QStringLiteral("caminho_remove_item")}},
        {QStringLiteral("txtsoma"), {QStringLiteral("Export"), QStringLiteral("caminho_soma")}},
        {QStringLiteral("txtcaminho_febraban"),
         {QStringLiteral("Export"), QStringLiteral("caminho_febraban")}}};
    const auto key = keys.value(QLatin1String(name));
    QLineEdit* e = edit(name, key.first, key.second);
    auto* b = new QPushButton(QStringLiteral("..."), this);
    b->setObjectName(QLatin1String(button));
    b->setMaximumWidth(40);
    connect(b, &QPushButton::clicked, this, [this, e, folder] {
        const QString start = Options::resolve(m_ctx, e->text());
        const QString chosen =
            folder ? chooseFolder(this, kProcura, start) : chooseFile(this, kProcura, start);
        if (!chosen.isEmpty())
            e->setText(QDir::toNativeSeparators(folder ? Options::withSeparator(chosen) : chosen));
    });
    grid->addWidget(new QLabel(caption, this), row * 2, 0, 1, 2);
    grid->addWidget(e, row * 2 + 1, 0);
    grid->addWidget(b, row * 2 + 1, 1);
    return e;
}

QWidget* frmOpcoes::buildDiretorios() {
    auto* grid = new QGridLayout;
    pathRow(grid, 0, "txtcaminho1",
            QStringLiteral("Caminho para pasta de exportação integração retaguarda ."),
            "cmdCaminho1", true);
    pathRow(grid, 1, "txtcaminho_estorno",
            QStringLiteral("Caminho para arquivo alteração e estorno de guias de recebimentos "),
            "cmdCaminho2", true);
    pathRow(grid, 2, "txtitens_recebimento",
            QStringLiteral("Caminho para pasta de itens de recebimento"), "Command4", true);
    pathRow(grid, 3, "txtcaminho_remove_item",
            QStringLiteral("Caminho para arquivo remove item (Remove_item.txt)"), "cmdCaminho3",
            false);
    pathRow(grid, 4, "txtsoma", QStringLiteral("Caminho para arquivo soma (Soma.txt)"), "Command3",
            false);
    pathRow(grid, 5, "txtcaminho_febraban", QStringLiteral("Caminho para Exportação Febraban"),
            "cmdCaminhoFebraban", true);
    return page(this, grid);
}

QWidget* frmOpcoes::buildParametros() {
    auto* grid = new QGridLayout;
    const QString ex = QStringLiteral("Export");
    QLineEdit* banco = edit("txtnome_banco", ex, QStringLiteral("nome_banco"));
    QLineEdit* pref = edit("txtpref", QStringLiteral("Mensagem"), QStringLiteral("pref"));
    QLineEdit* cnpj = edit("txtcnpj", ex, QStringLiteral("cnpj"));
    for (QLineEdit* e : {banco, pref})
        e->setValidator(plainText(e));
    cnpj->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,14}")), cnpj));
    auto digits = [this, ex](const char* name, const char* key, int max) {
        QLineEdit* e = edit(name, ex, QLatin1String(key));
        e->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("\\d{0,%1}").arg(max)), e));
        return e;
    };
    const QString rede = QStringLiteral("Rede");
    auto number = [this, rede](const char* name, const char* key) {
        QLineEdit* e = edit(name, rede, QLatin1String(key));
        e->setValidator(
            new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,5}")), e));
        return e;
    };
    QLineEdit* senha = edit("txtRedeSenha", rede, QStringLiteral("senha"));
    senha->setEchoMode(QLineEdit::Password);
    const QList<QPair<QString, QWidget*>> rows = {
        {QStringLiteral("Nome do Banco no Arquivo"), banco},
        {QStringLiteral("Nome Empresa"), pref},
        {QStringLiteral("CNPJ"), cnpj},
        {QString(), check("chkRede", QStringLiteral("Habilitar Consulta de Arquivos"), ex,
                          QStringLiteral("rede"))},
        {QStringLiteral("Central da rede: servidor"),
         edit("txtRedeHost", rede, QStringLiteral("host"))},
        {QStringLiteral("Porta da central"), number("txtRedePorta", "porta")},
        {QStringLiteral("Banco da central"), edit("txtRedeNome", rede, QStringLiteral("nome"))},
        {QStringLiteral("Usuário da central"),
         edit("txtRedeUsuario", rede, QStringLiteral("usuario"))},
        {QStringLiteral("Senha da central (vazia: ~/.pgpass)"), senha},
        {QStringLiteral("Tempo limite da central (ms)"), number("txtRedeTempo", "tempo_limite")},
        {QStringLiteral("Código do banco (CNAB)"),
         digits("txtcod_banco_cnab", "cod_banco_cnab", 3)},
        {QString(), check("chkCnab",
                          QStringLiteral("Gerar arquivo CNAB (boletos bancários) na tela Arquivos "
                                         "Bancários"),
                          ex, QStringLiteral("cnab"))},
        {QStringLiteral("Agência"), digits("txtagencia", "agencia", 5)},
        {QStringLiteral("Dígito da agência"), edit("txtdv", ex, QStringLiteral("dv"))},
        {QStringLiteral("Cedente água"),
         edit("txtcedente_agua", ex, QStringLiteral("cedente_agua"))},
        {QStringLiteral("Cedente IPTU"),
         edit("txtcedente_iptu", ex, QStringLiteral("cedente_iptu"))}};
    int r = 0;
    for (const auto& [caption, w] : rows) {
        if (!caption.isEmpty())
            grid->addWidget(new QLabel(caption, this), r, 0);
        grid->addWidget(w, r++, 1);
    }
    qobject_cast<QLineEdit*>(m_controls.value(QStringLiteral("export/dv")))->setMaxLength(1);
    return page(this, grid);
}

QWidget* frmOpcoes::buildMensagem() {
    const QString msg = QStringLiteral("Mensagem");
    QLineEdit* mensagem = edit("txtmensagem", msg, QStringLiteral("mensagem"));
    mensagem->setValidator(plainText(mensagem));
    mensagem->setMaxLength(40); // one line of the coupon
    QLineEdit* guiche = edit("txtguiche", QStringLiteral("Export"), QStringLiteral("guiche"));
    guiche->setMaxLength(1);
    // Shown only: the letter changes with the database's owner (tolvane guiche assumir).
    guiche->setReadOnly(true);
    guiche->setToolTip(QStringLiteral("Com o movimento fechado, o administrador muda o guichê "
                                      "com tolvane guiche assumir LETRA."));
    guiche->setMaximumWidth(50);
    guiche->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[A-Za-z0-9]?")), guiche));
    connect(guiche, &QLineEdit::textEdited, guiche,
            [guiche](const QString& t) { guiche->setText(t.toUpper()); });
    QLineEdit* cabecalho = edit("txtcabecalho", msg, QStringLiteral("cabecalho"));
    cabecalho->setMaxLength(3);
    cabecalho->setMaximumWidth(70);
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Mensagem"), this), 0, 0);
    grid->addWidget(mensagem, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Guiche de Trabalho  (uma letra):"), this), 1, 0);
    grid->addWidget(guiche, 1, 1, Qt::AlignLeft);
    grid->addWidget(new QLabel(QStringLiteral("Cabeçalho - Autent. (deve ter 3 posições):"), this),
                    2, 0);
    grid->addWidget(cabecalho, 2, 1, Qt::AlignLeft);
    return page(this, grid);
}

QWidget* frmOpcoes::buildContabil() {
    auto* box = new QVBoxLayout;
    box->addWidget(check("chkSup", QStringLiteral("Somar Suprimento na conferência de caixa?"),
                         QStringLiteral("Reserva"), QStringLiteral("soma")));
    auto* juros = new QGroupBox(QStringLiteral("Juros de guias vencidas"), this);
    m_optDesc = new QRadioButton(
        QStringLiteral("Multa de 1% ao mês+ 0,33% ao dia até o limite de 10%"), juros);
    m_optDesc->setObjectName(QStringLiteral("optDesc"));
    m_optMulta = new QRadioButton(QStringLiteral("Multa de 2% + 1% ao mês ou fração"), juros);
    m_optMulta->setObjectName(QStringLiteral("optMulta"));
    auto* v = new QVBoxLayout(juros);
    v->addWidget(m_optDesc);
    v->addWidget(m_optMulta);
    m_controls.insert(id(QStringLiteral("Opcoes"), QStringLiteral("juros")), m_optDesc);
    box->addWidget(juros);
    return page(this, box);
}

QGroupBox* frmOpcoes::buildModelos() {
    auto* models = new QGroupBox(QStringLiteral("Autenticadora"), this);
    auto* mv = new QVBoxLayout(models);
    const char* names[] = {"optBematech", "optQuatro", "OptTXT"};
    const QString captions[] = {QStringLiteral("Bematech MP-20 MI (DLL)"),
                                QStringLiteral("Quattro AP40N (DLL)"), QStringLiteral("TXT")};
    for (int i = 0; i < 3; ++i) {
        m_models[i] = new QRadioButton(captions[i], models);
        m_models[i]->setObjectName(QLatin1String(names[i]));
        mv->addWidget(m_models[i]);
    }
    mv->addWidget(note("lblNotaAutenticadora",
                       QStringLiteral("O Tolvane fala direto com a autenticadora pela porta: "
                                      "nenhuma DLL é instalada.")));
    return models;
}

int frmOpcoes::addSwitches(QGridLayout* grid, int r) {
    const QString pr = QStringLiteral("Print");
    for (QCheckBox* c :
         {check("chkPrintCupom", QStringLiteral("Imprimir no cupom após autenticar o boleto?"), pr,
                QStringLiteral("print_cupom")),
          check("chkTecla_mais", QStringLiteral("Habilitar gravação de recebimentos em txt?"),
                QStringLiteral("Export"), QStringLiteral("tecla_mais")),
          check("chkCabecalho", QStringLiteral("Habilitar impressão de cabeçalho em cupom?"), pr,
                QStringLiteral("cabecalho")),
          check("chkModo", QStringLiteral("Habilitar a autenticadora?"), pr,
                QStringLiteral("modo"))}) {
        grid->addWidget(c, r++, 0, 1, 3);
        // What the + key switch does, in the cashier's words, under its caption.
        if (c->objectName() == QLatin1String("chkTecla_mais"))
            grid->addWidget(note("lblNotaTeclaMais",
                                 QStringLiteral("Marcada: no caixa, a tecla + abre a lista de "
                                                "tipos de guia já aberta. Desmarcada: a tecla + "
                                                "só leva o cursor à lista.")),
                            r++, 0, 1, 3);
    }
    return r;
}

QWidget* frmOpcoes::buildImpressao() {
    const QString pr = QStringLiteral("Print");
    m_porta = new QComboBox(this);
    m_porta->setObjectName(QStringLiteral("cmbPorta"));
    m_porta->setEditable(true); // also a device, tcp:HOST:PORTA or file:CAMINHO
    m_porta->addItems({QStringLiteral("LPT1"), QStringLiteral("LPT2"), QStringLiteral("COM1"),
                       QStringLiteral("COM2"), QStringLiteral("USB")});
    m_controls.insert(id(pr, QStringLiteral("porta")), m_porta);
    QGroupBox* models = buildModelos();
    m_controls.insert(id(pr, QStringLiteral("impressora")), m_models[0]);
    QLineEdit* ip = edit("txtIP", pr, QStringLiteral("ip"));
    ip->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9A-Za-z.:-]*")), ip));

    auto* grid = new QGridLayout;
    int r = 0;
    grid->addWidget(new QLabel(QStringLiteral("Porta de Impressão"), this), r, 0);
    grid->addWidget(m_porta, r++, 1);
    grid->addWidget(models, r++, 0, 1, 3);
    grid->addWidget(
        new QLabel(QStringLiteral("TXT com a porta USB informe o IP deste computador"), this), r,
        0);
    grid->addWidget(ip, r++, 1);
    r = addInstalledPrinters(grid, r);
    r = addSwitches(grid, r);
    addPrintingHelp(grid, r);
    grid->setColumnStretch(1, 1);
    return page(this, grid);
}

int frmOpcoes::addInstalledPrinters(QGridLayout* grid, int r) {
    const QString pr = QStringLiteral("Print");
    m_impressoras = new QComboBox(this);
    m_impressoras->setObjectName(QStringLiteral("cmbImpressoras"));
    auto fixedLabel = [this, pr](const char* name, const char* key) {
        auto* l = new QLabel(this);
        l->setObjectName(QLatin1String(name));
        l->setFrameShape(QFrame::StyledPanel);
        l->setMinimumWidth(220);
        m_controls.insert(id(pr, QLatin1String(key)), l);
        return l;
    };
    m_impressora = fixedLabel("lblImpressoraNome", "impressora_padrao");
    m_autenticadora = fixedLabel("lblAutenticadoraNome", "impressora_autenticadora");
    auto fixa = [this](const char* name, QLabel* target) {
        auto* b = new QPushButton(QStringLiteral("Fixa"), this);
        b->setObjectName(QLatin1String(name));
        connect(b, &QPushButton::clicked, this, [this, target] {
            target->setProperty("value", m_impressoras->currentData().toString());
            target->setText(m_impressoras->currentData().toString());
        });
        return b;
    };
    auto caption = [this](const char* name, const QString& text) {
        auto* l = new QLabel(text, this);
        l->setObjectName(QLatin1String(name));
        return l;
    };
    grid->addWidget(new QLabel(QStringLiteral("Impressoras Instaladas"), this), r, 0);
    grid->addWidget(m_impressoras, r++, 1);
    grid->addWidget(caption("lblImpressora", QStringLiteral("Impressora.....:")), r, 0);
    grid->addWidget(m_impressora, r, 1);
    grid->addWidget(fixa("cmdEscolhe", m_impressora), r++, 2);
    grid->addWidget(caption("lblAutenticadora", QStringLiteral("Autenticadora:")), r, 0);
    grid->addWidget(m_autenticadora, r, 1);
    grid->addWidget(fixa("Command5", m_autenticadora), r++, 2);
    return r;
}

void frmOpcoes::addPrintingHelp(QGridLayout* grid, int r) {
    auto* pastaPdf = new QLabel(
        QStringLiteral(
            "Sem impressora instalada, cupons e relatórios são gravados em PDF em %1 e %2")
            .arg(QDir::toNativeSeparators(
                     OrdinaryPrinter::pasta(m_ctx, OrdinaryPrinter::Pasta::Cupons)),
                 QDir::toNativeSeparators(
                     OrdinaryPrinter::pasta(m_ctx, OrdinaryPrinter::Pasta::Relatorios))),
        this);
    pastaPdf->setObjectName(QStringLiteral("lblPastaPdf"));
    pastaPdf->setWordWrap(true);
    pastaPdf->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(pastaPdf, r++, 0, 1, 3);
    auto* ajuda = new QLabel(
        QStringLiteral("Para uso de cabo USB paralelo, habilite a opção TXT  mude a porta para USB "
                       "e informe o IP do computador. Localize a Impressora instalada no Windows "
                       "compartilhe e mude a porta para USB001 - porta virtual para impressora "
                       "genérica instalada."),
        this);
    ajuda->setObjectName(QStringLiteral("lblAjuda"));
    ajuda->setWordWrap(true);
    grid->addWidget(ajuda, r++, 0, 1, 3);
    grid->addWidget(note("lblAjudaLinux",
                         QStringLiteral("Em Linux, informe em Porta de Impressão o dispositivo "
                                        "(/dev/usb/lp0, /dev/ttyS0), tcp:ENDEREÇO:PORTA ou "
                                        "file:CAMINHO; não é preciso compartilhar a impressora.")),
                    r++, 0, 1, 3);
}

void frmOpcoes::setInstalledPrinters(const QStringList& names) {
    m_impressoras->clear();
    m_impressoras->addItem(QStringLiteral("(nenhuma)"), QString());
    for (const QString& n : names)
        m_impressoras->addItem(n, n);
    m_impressoras->setCurrentIndex(names.isEmpty() ? 0 : 1);
}

void frmOpcoes::load() {
    const Options::Values values = Options::load(m_ctx.iniPath());
    for (const IniFile::Entry& v : values) {
        QWidget* w = m_controls.value(id(v.section, v.key));
        if (auto* e = qobject_cast<QLineEdit*>(w))
            e->setText(v.value);
        else if (auto* c = qobject_cast<QCheckBox*>(w))
            c->setChecked(v.key == QLatin1String("cabecalho") ? Options::headerSwitchOn(v.value)
                                                              : v.value == QLatin1String("1"));
        else if (auto* l = qobject_cast<QLabel*>(w)) {
            l->setProperty("value", v.value);
            l->setText(v.value);
        }
    }
    m_headerSwitch = Options::value(values, QStringLiteral("Print"), QStringLiteral("cabecalho"));
    // The list opens on the printer already chosen, when it is still installed.
    const int chosen = m_impressoras->findData(m_impressora->property("value").toString());
    if (chosen > 0)
        m_impressoras->setCurrentIndex(chosen);
    const QString juros = Options::value(values, QStringLiteral("Opcoes"), QStringLiteral("juros"));
    m_optDesc->setChecked(juros.trimmed() == QLatin1String("1"));
    m_optMulta->setChecked(juros.trimmed() == QLatin1String("2"));
    m_porta->setCurrentText(
        Options::value(values, QStringLiteral("Print"), QStringLiteral("porta")));
    const QString model =
        Options::value(values, QStringLiteral("Print"), QStringLiteral("impressora")).trimmed();
    for (int i = 0; i < 3; ++i)
        m_models[i]->setChecked(
            model.compare(QLatin1String(kModelValues[i]), Qt::CaseInsensitive) == 0);
}

void frmOpcoes::reveal(QWidget* w) {
    for (QWidget* p = w; p && p != this; p = p->parentWidget())
        if (auto* stack = qobject_cast<QStackedWidget*>(p->parentWidget()))
            if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget()))
                tabs->setCurrentWidget(p);
    w->setFocus();
}

void frmOpcoes::gravar() {
    Options::Values values;
    for (const OptionCatalog::Key& k : OptionCatalog::screenKeys()) {
        const QString key = id(k.section, k.key);
        QWidget* w = m_controls.value(key);
        if (key == QLatin1String("opcoes/juros"))
            values.append({k.section, k.key,
                           m_optDesc->isChecked() ? QStringLiteral("1") : QStringLiteral("2")});
        else if (key == QLatin1String("print/impressora")) {
            for (int i = 0; i < 3; ++i)
                if (m_models[i]->isChecked())
                    values.append({k.section, k.key, QLatin1String(kModelValues[i])});
        } else if (key == QLatin1String("print/porta"))
            values.append({k.section, k.key, m_porta->currentText()});
        else if (key == QLatin1String("print/cabecalho"))
            values.append(
                {k.section, k.key,
                 Options::headerSwitch(qobject_cast<QCheckBox*>(w)->isChecked(), m_headerSwitch)});
        else if (auto* e = qobject_cast<QLineEdit*>(w))
            values.append({k.section, k.key, e->text()});
        else if (auto* c = qobject_cast<QCheckBox*>(w))
            values.append(
                {k.section, k.key, c->isChecked() ? QStringLiteral("1") : QStringLiteral("0")});
        else if (auto* l = qobject_cast<QLabel*>(w))
            values.append({k.section, k.key, l->property("value").toString()});
    }
    const Options::Result r = Options::gravar(m_ctx, values);
    if (r.problem) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), Options::message(*r.problem));
        if (QWidget* w = m_controls.value(id(r.problem->section, r.problem->key)))
            reveal(w);
        return;
    }
    if (!r.written) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), Options::notWritten(m_ctx));
        return;
    }
    accept();
}
