#include "clsGeraIntegra.h"

namespace {

using G = clsGeraIntegra;
using F = G::Fill;

// The layout of each record, one row per field: position, width, property, fill.
constexpr G::Field kHeader[] = {
    {1, 1, nullptr, F::Fixed, 'A'},
    {2, 6, &G::BANCO, F::Zeros, 0},
    {8, 8, &G::DATA_RECEBIMENTO, F::AsIs, 0},
    {16, 1, &G::SETOR, F::AsIs, 0}, // the counter number as configured
    {17, 14, &G::NSA, F::Zeros, 0},
    {31, 1, nullptr, F::Fixed, '0'},
    {32, 169, nullptr, F::Fixed, ' '},
};

constexpr G::Field kContent[] = {
    {1, 1, &G::REG, F::AsIs, 0},
    {2, 8, &G::DATA_CREDITO, F::AsIs, 0},
    {10, 1, nullptr, F::Fixed, ' '},
    {11, 5, &G::AUTENTICA, F::Zeros, 0},
    {16, 1, &G::GUICHE, F::Zeros, 0},
    {17, 4, &G::TIPO, F::Zeros, 0},
    {21, 1, nullptr, F::Fixed, ' '},
    {22, 9, &G::ENTRADA, F::Zeros, 0},
    {31, 9, &G::SAIDA, F::Zeros, 0},
    {40, 9, &G::DIFERENCA, F::Zeros, 0},
    {49, 1, nullptr, F::Fixed, ' '},
    {50, 44, &G::BARRA, F::AsIs, 0},
    {94, 1, nullptr, F::Fixed, ' '},
    {95, 10, &G::ESPECIE, F::Spaces, 0},
    {105, 10, &G::IDENTIFICA, F::Zeros, 0},
    {115, 1, nullptr, F::Fixed, ' '},
    {116, 1, &G::EXPORT, F::AsIs, 0}, // the stored flag as it is
    {117, 84, &G::MSG, F::Spaces, 0},
};

constexpr G::Field kDebitoHeader[] = {
    {1, 1, &G::D_REG, F::AsIs, 0}, // "J" withdrawal, "S" payment out
    {2, 8, &G::DATA_RECEBIMENTO, F::AsIs, 0},
    {10, 10, &G::D_VALORTOTAL, F::Zeros, 0},
    {20, 10, &G::D_ID, F::Zeros, 0},
    {30, 171, &G::D_DESCRICAO, F::Spaces, 0},
};

constexpr G::Field kDebitoContent[] = {
    {1, 1, nullptr, F::Fixed, 'D'},      {2, 5, &G::D_ESPECIE, F::Zeros, 0},
    {7, 30, &G::D_NUMERO, F::Spaces, 0}, {37, 10, &G::D_VALOR, F::Zeros, 0},
    {47, 10, &G::D_ID, F::Zeros, 0},     {57, 144, nullptr, F::Fixed, ' '},
};

constexpr G::Field kFooter[] = {
    {1, 1, nullptr, F::Fixed, 'Z'},   {2, 9, &G::cont, F::Zeros, 0},
    {11, 15, &G::TOTAL, F::Zeros, 0}, {26, 15, &G::CONFCAIXA, F::Zeros, 0},
    {41, 1, nullptr, F::Fixed, '0'},  {42, 159, nullptr, F::Fixed, ' '},
};

// Each field starts where the previous one ends and the last one ends at 200.
template <std::size_t N> constexpr bool contiguous(const G::Field (&fields)[N]) {
    int next = 1;
    for (const G::Field& f : fields) {
        if (f.pos != next || f.width <= 0 || (f.fill == F::Fixed) != (f.value == nullptr))
            return false;
        next += f.width;
    }
    return next == G::kTamanho + 1;
}
static_assert(contiguous(kHeader) && contiguous(kContent) && contiguous(kDebitoHeader) &&
              contiguous(kDebitoContent) && contiguous(kFooter));

} // namespace

std::span<const G::Field> clsGeraIntegra::layout(Registro r) {
    switch (r) {
    case Registro::Header:
        return kHeader;
    case Registro::Content:
        return kContent;
    case Registro::DebitoHeader:
        return kDebitoHeader;
    case Registro::DebitoContent:
        return kDebitoContent;
    case Registro::Footer:
        break;
    }
    return kFooter;
}

QString clsGeraIntegra::nome(Registro r) {
    switch (r) {
    case Registro::Header:
        return QStringLiteral("Header");
    case Registro::Content:
        return QStringLiteral("CONTENT");
    case Registro::DebitoHeader:
        return QStringLiteral("HEADER_DEBITO");
    case Registro::DebitoContent:
        return QStringLiteral("CONTENT_DEBITO");
    case Registro::Footer:
        break;
    }
    return QStringLiteral("FOOTER");
}

int clsGeraIntegra::largura(Registro r, QString clsGeraIntegra::*value) {
    for (const Field& f : layout(r))
        if (f.value == value)
            return f.width;
    return 0;
}

QString clsGeraIntegra::campo(Registro r, QString clsGeraIntegra::*value, const QString& text) {
    for (const Field& f : layout(r)) {
        if (f.value != value)
            continue;
        if (f.fill == Fill::Zeros)
            return text.rightJustified(f.width, QLatin1Char('0'));
        if (f.fill == Fill::Spaces)
            return text.leftJustified(f.width, QLatin1Char(' '));
        return text;
    }
    return text;
}

bool clsGeraIntegra::build(Registro r, QString& out) const {
    out.clear();
    for (const Field& f : layout(r))
        out += f.value ? this->*f.value : QString(f.width, QLatin1Char(f.fixed));
    return out.size() == kTamanho;
}

bool clsGeraIntegra::Cria_header() {
    return build(Registro::Header, m_header);
}

bool clsGeraIntegra::Cria_header_debito() {
    return build(Registro::DebitoHeader, m_debitoHeader);
}

bool clsGeraIntegra::Cria_content_debito() {
    return build(Registro::DebitoContent, m_debitoContent);
}

bool clsGeraIntegra::Cria_footer() {
    return build(Registro::Footer, m_footer);
}

bool clsGeraIntegra::Cria_content() {
    return build(Registro::Content, m_content);
}
