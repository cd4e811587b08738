#include "frmCodBarra.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "SystemTexts.h"
#include "clsCodBarra.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QLabel* help(const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setWordWrap(true);
    QFont f = l->font();
    f.setPointSizeF(f.pointSizeF() * 0.9);
    f.setItalic(true);
    l->setFont(f);
    return l;
}

QComboBox* combo(const char* name, const QStringList& items, QWidget* parent) {
    auto* c = new QComboBox(parent);
    c->setObjectName(QLatin1String(name));
    c->addItems(items);
    c->setCurrentIndex(-1);
    return c;
}

// One row of the form: the caption (the field's buddy), the field and its help lines.
struct CaptionedField {
    QString caption;
    QWidget* field;
    QStringList helps;
};

void addCaptioned(QGridLayout* grid, int row, const CaptionedField& f, QWidget* frame) {
    auto* l = new QLabel(f.caption, frame);
    l->setBuddy(f.field);
    grid->addWidget(l, row, 0, Qt::AlignTop);
    grid->addWidget(f.field, row, 1, Qt::AlignTop);
    auto* h = new QVBoxLayout;
    for (const QString& t : f.helps)
        h->addWidget(help(t, frame));
    grid->addLayout(h, row, 2);
}

} // namespace

frmCodBarra::frmCodBarra(AppContext& ctx, QWidget* parent) : RegistryScreen(ctx, parent) {
    setObjectName(QStringLiteral("frmCodBarra"));
    setWindowTitle(QStringLiteral("Cadastro de Tipos de Guia"));
    build({QStringLiteral("&Item"),
           {QStringLiteral("COD."), QStringLiteral("Tipo"), QStringLiteral("Descrição"),
            QStringLiteral("Padrão"), QStringLiteral("Juros"), QStringLiteral("Bloqueio"),
            QStringLiteral("Cod. Banco")},
           "Command1_0",
           "Command1_1",
           QStringLiteral("&Gravar e Concluir")},
          buildForm());
    resize(760, 560);
    Lista_codigos();
}

QWidget* frmCodBarra::buildForm() {
    auto* frame = new QGroupBox(QStringLiteral("Tipo de guia"), this);
    frame->setObjectName(QStringLiteral("Frame"));
    createFields(frame);
    const CaptionedField rows[] = {
        {QStringLiteral("COD.:"),
         m_ordem,
         {QStringLiteral(
             "Use númeração de 1 a 99 para itens de entrada e 100 a 999 para itens de saída")}},
        {QStringLiteral("Tipo:"),
         m_tipo,
         {QStringLiteral(
              "Febrabam - posição inicial 16 com 4 caracteres (leitura do código de barras)"),
          QStringLiteral(
              "CNAB SIGCB - posição inicial 20 com 5 caracteres (leitura do código de barras)"),
          QStringLiteral(
              "CNAB SICOB - posição inicial 30 com 5 caracteres (leitura do código de barras)")}},
        {QStringLiteral("Descrição:"), m_descricao, {}},
        {QStringLiteral("Padrão:"),
         m_padrao,
         {QStringLiteral(
             "Refere-se ao tipo de código de barras usado. Itens de saída usa-se \"S\"")}},
        {QStringLiteral("Juros:"),
         m_juros,
         {QStringLiteral("\"S\" cobra juros e \"N\" não cobra juros")}},
        {QStringLiteral("Bloqueio:"),
         m_bloqueio,
         {QStringLiteral("\"S\" bloqueia e \"N\" não bloqueia (contas de um ano para outro)")}},
        {QStringLiteral("Cod. Banco:"),
         m_codbanco,
         {QStringLiteral("Número do agente arrecadador atribuído pelo sistema de arrecadação "
                         "(usado nos arquivos do banco)")}},
    };
    auto* grid = new QGridLayout(frame);
    int r = 0;
    for (const CaptionedField& row : rows)
        addCaptioned(grid, r++, row, frame);
    grid->setColumnStretch(2, 1);

    return frame;
}

void frmCodBarra::createFields(QWidget* frame) {
    auto edit = [frame](const char* name, int maxLength) {
        auto* e = new QLineEdit(frame);
        e->setObjectName(QLatin1String(name));
        e->setMaxLength(maxLength);
        return e;
    };
    m_ordem = edit("txtordem", 3);
    m_ordem->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("\\d{0,3}")), m_ordem));
    m_ordem->setMaximumWidth(80);
    m_tipo = edit("txtTipo", 10);
    m_tipo->setMaximumWidth(120);
    m_descricao = edit("txtdescricao", 60);
    m_padrao =
        combo("cmbPadrao", {QStringLiteral("F"), QStringLiteral("C"), QStringLiteral("S")}, frame);
    m_padrao->setEditable(true); // other letters for items read without a standard
    m_padrao->lineEdit()->setMaxLength(1);
    m_juros = combo("cmbJuros", {QStringLiteral("S"), QStringLiteral("N")}, frame);
    m_bloqueio = combo("cmbBloqueio", {QStringLiteral("S"), QStringLiteral("N")}, frame);
    m_codbanco = edit("txtcodbanco", 20);
    m_codbanco->setMaximumWidth(160);
}

void frmCodBarra::Lista_codigos() {
    m_list->clear();
    const auto kinds = clsCodBarra::listar(m_ctx.db);
    if (!kinds)
        return; // the read failure is already in Log.ini
    for (const clsCodBarra& k : *kinds) {
        auto* item = new QTreeWidgetItem({KindRegistry::codeText(k.IDCOD), k.IDTIPO, k.DESCRICAO,
                                          k.PADRAO, k.Juros, k.BLOQUEIO, k.CODBANCO});
        item->setData(0, Qt::UserRole, int(k.IDCOD));
        m_list->addTopLevelItem(item);
    }
}

void frmCodBarra::limpar() {
    for (QLineEdit* e : {m_ordem, m_tipo, m_descricao, m_codbanco})
        e->clear();
    for (QComboBox* c : {m_padrao, m_juros, m_bloqueio})
        c->setCurrentIndex(-1);
    m_padrao->setEditText(QString());
    m_ordem->setReadOnly(false);
    m_mode = KindRegistry::Mode::Insert;
}

void frmCodBarra::cancelar() {
    limpar();
    RegistryScreen::cancelar();
}

void frmCodBarra::editar() {
    QTreeWidgetItem* item = selecionado();
    if (!item)
        return;
    clsCodBarra k(m_ctx.db);
    if (!k.SQLSelect(item->data(0, Qt::UserRole).toInt()))
        return;
    limpar();
    m_ordem->setText(QString::number(k.IDCOD));
    m_ordem->setReadOnly(true); // an update never changes the key
    m_tipo->setText(k.IDTIPO);
    m_descricao->setText(k.DESCRICAO);
    m_padrao->setEditText(k.PADRAO);
    m_juros->setCurrentIndex(m_juros->findText(k.Juros));
    m_bloqueio->setCurrentIndex(m_bloqueio->findText(k.BLOQUEIO));
    m_codbanco->setText(k.CODBANCO);
    m_mode = KindRegistry::Mode::Update;
    m_tabs->setCurrentIndex(1);
    m_tipo->setFocus();
}

void frmCodBarra::novo() {
    limpar();
    m_tabs->setCurrentIndex(1);
    m_ordem->setFocus();
}

QWidget* frmCodBarra::widgetFor(KindRegistry::Field field) const {
    switch (field) {
    case KindRegistry::Field::IDCOD:
        return m_ordem;
    case KindRegistry::Field::IDTIPO:
        return m_tipo;
    case KindRegistry::Field::DESCRICAO:
        return m_descricao;
    case KindRegistry::Field::PADRAO:
        return m_padrao;
    case KindRegistry::Field::JUROS:
        return m_juros;
    case KindRegistry::Field::BLOQUEIO:
        return m_bloqueio;
    case KindRegistry::Field::None:
        break;
    }
    return nullptr;
}

void frmCodBarra::gravar() {
    KindRegistry::Input in;
    bool ok = false;
    const int code = m_ordem->text().trimmed().toInt(&ok);
    if (ok)
        in.idcod = code;
    in.idtipo = m_tipo->text();
    in.descricao = m_descricao->text();
    in.padrao = m_padrao->currentText();
    in.juros = m_juros->currentText();
    in.bloqueio = m_bloqueio->currentText();
    in.codbanco = m_codbanco->text();
    const KindRegistry::Result r = KindRegistry::gravar(m_ctx, in, m_mode);
    switch (r.outcome) {
    case KindRegistry::Outcome::Saved:
        limpar();
        m_tabs->setCurrentIndex(0);
        Lista_codigos();
        return;
    case KindRegistry::Outcome::MissingField:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CamposObrigatorios));
        break;
    case KindRegistry::Outcome::CodeOutOfRange:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NumeracaoTipo));
        break;
    case KindRegistry::Outcome::InvalidFlags:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::PadraoUmaLetra));
        break;
    case KindRegistry::Outcome::CodeInUse:
        tell(m_ctx.dialogs,
             SystemTexts::notice(SystemText::CodigoJaCadastrado).arg(KindRegistry::codeText(code)));
        break;
    case KindRegistry::Outcome::NotFound:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CodigoNaoMaisCadastrado)
                                .arg(KindRegistry::codeText(code)));
        break;
    case KindRegistry::Outcome::TextRefused:
    case KindRegistry::Outcome::LayoutInUse:
        m_ctx.dialogs.warn(SystemTexts::aviso(), r.message);
        break;
    case KindRegistry::Outcome::WriteFailed:
        break; // the data layer has shown and logged why
    }
    if (QWidget* w = widgetFor(r.field))
        w->setFocus();
}

void frmCodBarra::excluir() {
    QTreeWidgetItem* item = selecionado();
    if (!item || !confirmaExclusao(item))
        return;
    const int code = item->data(0, Qt::UserRole).toInt();
    switch (KindRegistry::excluir(m_ctx, code)) {
    case KindRegistry::DeleteOutcome::Deleted:
        break;
    case KindRegistry::DeleteOutcome::InUse:
        tell(
            m_ctx.dialogs,
            SystemTexts::notice(SystemText::TipoComRecebimentos).arg(KindRegistry::codeText(code)));
        return;
    case KindRegistry::DeleteOutcome::NotFound:
    case KindRegistry::DeleteOutcome::Failed:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroExcluir));
        return;
    }
    Lista_codigos();
}
