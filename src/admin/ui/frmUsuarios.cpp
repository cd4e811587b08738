#include "frmUsuarios.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeWidget>

const QString frmUsuarios::kAutNum = QStringLiteral("Aut.Num.");

frmUsuarios::frmUsuarios(AppContext& ctx, QWidget* parent) : RegistryScreen(ctx, parent) {
    setObjectName(QStringLiteral("frmUsuarios"));
    setWindowTitle(QStringLiteral("Cadastro de Usuários"));
    build({QStringLiteral("&Usuário"),
           {QStringLiteral("Nome"), QStringLiteral("Tipo"), QStringLiteral("Ativo"),
            QStringLiteral("Código")},
           "cmdEditar",
           "cmdNovo",
           QStringLiteral("&Gravar")},
          buildForm());
    resize(560, 440);
    Lista_users();
}

QWidget* frmUsuarios::buildForm() {
    auto* page = new QWidget(this);
    m_ordem = new QLineEdit(kAutNum, page);
    m_ordem->setObjectName(QStringLiteral("txtordem"));
    m_ordem->setReadOnly(true); // the database gives the key
    m_ordem->setMaximumWidth(100);
    m_nome = new QLineEdit(page);
    m_nome->setObjectName(QStringLiteral("txtnome"));
    m_nome->setMaxLength(50);
    m_senha = new QLineEdit(page);
    m_senha->setObjectName(QStringLiteral("txtsenha"));
    m_senha->setEchoMode(QLineEdit::Password);
    m_senha->setMaxLength(30);
    m_tipo = new QComboBox(page);
    m_tipo->setObjectName(QStringLiteral("Combo"));
    m_tipo->addItems({QStringLiteral("USER"), QStringLiteral("ADM")});
    m_ativo = new QCheckBox(QStringLiteral("Ativo"), page);
    m_ativo->setObjectName(QStringLiteral("Check"));
    m_ativo->setChecked(true);
    auto* form = new QFormLayout(page);
    form->addRow(QStringLiteral("Código:"), m_ordem);
    form->addRow(QStringLiteral("Nome:"), m_nome);
    form->addRow(QStringLiteral("Senha:"), m_senha);
    form->addRow(QStringLiteral("Tipo:"), m_tipo);
    form->addRow(QString(), m_ativo);
    return page;
}

void frmUsuarios::Lista_users() {
    m_list->clear();
    const auto all = UserAccounts::listar(m_ctx);
    if (!all)
        return; // the read failure is already in Log.ini
    for (const clsUsuarios& u : *all) {
        auto* item = new QTreeWidgetItem(
            {u.NOME, u.TIPO, u.ATIVO == 1 ? QStringLiteral("Sim") : QStringLiteral("Não"),
             QString::number(u.ID)});
        item->setData(0, Qt::UserRole, u.ID);
        m_list->addTopLevelItem(item);
    }
}

void frmUsuarios::editar() {
    QTreeWidgetItem* item = selecionado();
    if (!item)
        return;
    clsUsuarios u(m_ctx.db);
    if (!u.SQLSelect(item->data(0, Qt::UserRole).toInt()))
        return;
    m_ordem->setText(QString::number(u.ID));
    m_nome->setText(u.NOME);
    m_senha->clear();
    m_senha->setPlaceholderText(QStringLiteral("em branco mantém a senha atual"));
    m_tipo->setCurrentIndex(m_tipo->findText(u.TIPO));
    m_ativo->setChecked(u.ATIVO == 1);
    m_tabs->setCurrentIndex(1);
    m_nome->setFocus();
}

void frmUsuarios::novo() {
    m_ordem->setText(kAutNum);
    m_nome->clear();
    m_senha->clear();
    m_senha->setPlaceholderText(QString());
    m_tipo->setCurrentIndex(0);
    m_ativo->setChecked(true);
    m_tabs->setCurrentIndex(1);
    m_nome->setFocus();
}

bool frmUsuarios::refused(const UserAccounts::Result& r) {
    QLineEdit* focus = r.field == UserAccounts::Field::NOME ? m_nome : m_senha;
    switch (r.outcome) {
    case UserAccounts::Outcome::Saved:
        return false;
    case UserAccounts::Outcome::MissingField:
    case UserAccounts::Outcome::InvalidType:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CamposObrigatorios));
        break;
    case UserAccounts::Outcome::ShortPassword:
        tell(m_ctx.dialogs,
             SystemTexts::notice(SystemText::SenhaCurta).arg(UserAccounts::kMinPassword));
        break;
    case UserAccounts::Outcome::PasswordInUse:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::SenhaEmUso));
        break;
    case UserAccounts::Outcome::NameInUse:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NomeEmUso));
        break;
    case UserAccounts::Outcome::NotFound:
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::UsuarioNaoEncontrado));
        break;
    case UserAccounts::Outcome::TextRefused:
        m_ctx.dialogs.warn(SystemTexts::aviso(), r.message);
        break;
    case UserAccounts::Outcome::QuoteRefused:
    case UserAccounts::Outcome::WriteFailed:
        break; // shown and logged where it failed
    }
    focus->setFocus();
    return true;
}

void frmUsuarios::gravar() {
    UserAccounts::Input in;
    if (m_ordem->text() != kAutNum)
        in.id = m_ordem->text().toInt();
    in.nome = m_nome->text();
    in.senha = m_senha->text();
    in.tipo = m_tipo->currentText();
    in.ativo = m_ativo->isChecked();
    if (refused(UserAccounts::check(m_ctx, in)))
        return;
    if (!in.senha.trimmed().isEmpty()) {
        const Notice ask = SystemTexts::notice(SystemText::ConfirmeSenha);
        const auto again = m_ctx.dialogs.input(ask.title, ask.text, true, QString());
        if (!again || again->trimmed().isEmpty())
            return;
        if (again->trimmed() != in.senha.trimmed()) {
            tell(m_ctx.dialogs, SystemTexts::notice(SystemText::SenhaNaoConfere));
            m_senha->setFocus();
            return;
        }
    }
    const UserAccounts::Result r = UserAccounts::gravar(m_ctx, in);
    if (refused(r))
        return;
    m_ordem->setText(QString::number(r.id));
    m_senha->clear();
    Lista_users();
    m_tabs->setCurrentIndex(0);
}

void frmUsuarios::excluir() {
    QTreeWidgetItem* item = selecionado();
    if (!item || !confirmaExclusao(item))
        return;
    const qint32 id = item->data(0, Qt::UserRole).toInt();
    auto r = UserAccounts::excluir(m_ctx, id, false);
    if (r == UserAccounts::DeleteOutcome::LastAdministrator) {
        if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::UltimoAdministrador)))
            return;
        r = UserAccounts::excluir(m_ctx, id, true);
    }
    if (r != UserAccounts::DeleteOutcome::Deleted) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroExcluir));
        return;
    }
    Lista_users();
}
