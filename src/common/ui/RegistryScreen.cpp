#include "RegistryScreen.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

RegistryScreen::RegistryScreen(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {}

void RegistryScreen::build(const Layout& l, QWidget* fields) {
    auto* menu = new QMenuBar(this);
    auto* excluirAction = new QAction(QStringLiteral("&Excluir"), this);
    excluirAction->setObjectName(QStringLiteral("mnuexcluir"));
    connect(excluirAction, &QAction::triggered, this, [this] { excluir(); });
    menu->addMenu(l.menu)->addAction(excluirAction);
    auto button = [this](QWidget* page, const char* name, const QString& text, auto slot) {
        auto* b = new QPushButton(text, page);
        b->setObjectName(QLatin1String(name));
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };

    auto* listPage = new QWidget(this);
    m_list = new QTreeWidget(listPage);
    m_list->setObjectName(QStringLiteral("ListView1"));
    m_list->setRootIsDecorated(false);
    m_list->setAlternatingRowColors(true);
    m_list->setHeaderLabels(l.columns);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { editar(); });
    auto* del = new QToolButton(listPage);
    del->setObjectName(QStringLiteral("cmdExcluir"));
    del->setToolButtonStyle(Qt::ToolButtonTextOnly);
    del->setDefaultAction(excluirAction);
    auto* listRow = new QHBoxLayout;
    listRow->addWidget(
        button(listPage, l.editar, QStringLiteral("&Alterar"), [this] { editar(); }));
    listRow->addWidget(button(listPage, l.novo, QStringLiteral("&Novo"), [this] { novo(); }));
    listRow->addWidget(del);
    listRow->addStretch();
    auto* listLayout = new QVBoxLayout(listPage);
    listLayout->addWidget(m_list, 1);
    listLayout->addLayout(listRow);

    auto* formPage = new QWidget(this);
    fields->setParent(formPage);
    auto* formRow = new QHBoxLayout;
    formRow->addStretch();
    formRow->addWidget(button(formPage, "Command2", l.gravar, [this] { gravar(); }));
    formRow->addWidget(
        button(formPage, "cmdCancelar", QStringLiteral("&Cancelar"), [this] { cancelar(); }));
    auto* formLayout = new QVBoxLayout(formPage);
    formLayout->addWidget(fields);
    formLayout->addStretch();
    formLayout->addLayout(formRow);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    m_tabs->addTab(listPage, QStringLiteral("Consulta"));
    m_tabs->addTab(formPage, QStringLiteral("Cadastro"));
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menu);
    layout->addWidget(m_tabs);
}

void RegistryScreen::cancelar() {
    m_tabs->setCurrentIndex(0);
}

QTreeWidgetItem* RegistryScreen::selecionado() {
    QTreeWidgetItem* item = m_list->currentItem();
    if (!item)
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::InformeItem));
    return item;
}

bool RegistryScreen::confirmaExclusao(const QTreeWidgetItem* item) {
    return askNotice(m_ctx.dialogs,
                     SystemTexts::notice(SystemText::PerguntaExcluirRegistro).arg(item->text(0)));
}
