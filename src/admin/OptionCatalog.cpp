#include "OptionCatalog.h"

namespace {

using K = OptionCatalog::Kind;

struct Row {
    const char* section;
    const char* key;
    K kind;
    bool onScreen;
};

const Row rows[] = {
    // The options screen, in the order it writes.
    {"Export", "Path1", K::Folder, true},
    {"Export", "Path2", K::Folder, true},
    {"Export", "Path3", K::Folder, true},
    {"Export", "caminho_remove_item", K::File, true},
    {"Export", "caminho_soma", K::File, true},
    {"Export", "caminho_febraban", K::Folder, true},
    {"Export", "nome_banco", K::Text, true},
    {"Mensagem", "pref", K::Text, true},
    {"Export", "cnpj", K::Digits, true},
    {"Export", "rede", K::Flag, true},
    {"Mensagem", "mensagem", K::Text, true},
    {"Export", "guiche", K::Guiche, true},
    {"Mensagem", "cabecalho", K::Cabecalho, true},
    {"Reserva", "soma", K::Flag, true},
    {"Opcoes", "juros", K::Juros, true},
    {"Print", "porta", K::Text, true},
    {"Print", "impressora", K::Modelo, true},
    {"Print", "ip", K::Text, true},
    {"Print", "impressora_padrao", K::Text, true},
    {"Print", "impressora_autenticadora", K::Text, true},
    {"Print", "print_cupom", K::Flag, true},
    {"Export", "tecla_mais", K::Flag, true},
    {"Print", "cabecalho", K::Text, true},
    // The bank files' identification and the printer switch, also on the screen.
    {"Export", "cod_banco_cnab", K::Digits, true},
    {"Export", "cnab", K::Flag, true}, // the export screen writes CNAB files
    {"Export", "agencia", K::Digits, true},
    {"Export", "dv", K::Text, true},
    {"Export", "cedente_agua", K::Text, true},
    {"Export", "cedente_iptu", K::Text, true},
    {"Print", "modo", K::Flag, true},
    // The central database of several counters.
    {"Rede", "host", K::Text, true},
    {"Rede", "porta", K::Number, true},
    {"Rede", "nome", K::Text, true},
    {"Rede", "usuario", K::Text, true},
    {"Rede", "senha", K::Secret, true},
    {"Rede", "tempo_limite", K::Number, true},
    // Written by their own screens or only from the command line.
    {"Skin", "nome", K::Skin, false},
    {"Opcoes", "Atualiza", K::UpdateFolder, false},
    {"Opcoes", "atualizador", K::Text, false},
    {"Opcoes", "porta", K::Number, false},
    {"Opcoes", "fator_vencimento", K::Text, false},
    {"Print", "modo_print", K::Text, false},
    {"Print", "lineFeed", K::Number, false},
    {"Print", "disableEsc", K::Number, false},
    {"Print", "serial", K::Text, false},
    {"Print", "pagina_codigo", K::Text, false},
    {"Print", "espera_documento", K::Number, false},
    {"Print", "tempo_resposta", K::Number, false},
    {"Print", "quattro_estado", K::Text, false},
    {"Print", "quattro_fim", K::Text, false},
    {"Print", "quattro_espera", K::Number, false},
    {"Reserva", "itens", K::MoneyKinds, false},
    {"Reserva", "cofre", K::Fixed, false},
    {"Banco", "tipo", K::Fixed, false},
    {"Banco", "host", K::Fixed, false},
    {"Banco", "porta", K::Fixed, false},
    {"Banco", "nome", K::Fixed, false},
    {"Banco", "usuario", K::Fixed, false},
};

QList<OptionCatalog::Key> build() {
    QList<OptionCatalog::Key> out;
    for (const Row& r : rows)
        out.append({QLatin1String(r.section), QLatin1String(r.key), r.kind, r.onScreen});
    return out;
}

} // namespace

const QList<OptionCatalog::Key>& OptionCatalog::all() {
    static const QList<Key> keys = build();
    return keys;
}

const OptionCatalog::Key* OptionCatalog::find(const QString& section, const QString& key) {
    for (const Key& k : all())
        if (k.section.compare(section, Qt::CaseInsensitive) == 0 &&
            k.key.compare(key, Qt::CaseInsensitive) == 0)
            return &k;
    return nullptr;
}

QList<OptionCatalog::Key> OptionCatalog::screenKeys() {
    QList<Key> out;
    for (const Key& k : all())
        if (k.onScreen)
            out.append(k);
    return out;
}
