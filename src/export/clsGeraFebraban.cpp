#include "clsGeraFebraban.h"

#include "RecordLayout.h"

namespace {

using F = LayoutField<clsGeraFebraban>;
using C = clsGeraFebraban;

// clang-format off
constexpr F kHeader[] = {
    F::text(1, 1, "A"),
    F::text(2, 2, "0"),
    F::zeros(3, 22),
    F::zeros(23, 42),
    F::prop(43, 45, &C::COD_BANCO),
    F::prop(46, 65, &C::NOME_BANCO),
    F::prop(66, 73, &C::DATA_ARQ),
    F::prop(74, 79, &C::CONT_ARQ),
    F::text(80, 81, "03"),                        // layout version
    F::blanks(82, 98),
    F::blanks(99, 150),
};

constexpr F kContent[] = {
    F::text(1, 1, "G"),
    F::zeros(2, 21),
    F::prop(22, 29, &C::DATA_PAGTO),              // payment date
    F::prop(30, 37, &C::DATA_PAGTO),              // credit date
    F::prop(38, 81, &C::COD_BARRA),
    F::prop(82, 93, &C::VALOR_ARREC),
    F::text(94, 100, "0000000"),                  // fee
    F::prop(101, 108, &C::NSR),
    F::blanks(109, 116),
    F::text(117, 117, "4"),
    F::blanks(118, 140),
    F::text(141, 141, "1"),
    F::blanks(142, 150),
};

constexpr F kFooter[] = {
    F::text(1, 1, "Z"),
    F::prop(2, 7, &C::QUANT_REG),
    F::prop(8, 24, &C::VALOR_TOTAL),
    F::blanks(25, 150),
};
// clang-format on

static_assert(RecordLayout::isComplete(kHeader, clsGeraFebraban::kTamanho));
static_assert(RecordLayout::isComplete(kContent, clsGeraFebraban::kTamanho));
static_assert(RecordLayout::isComplete(kFooter, clsGeraFebraban::kTamanho));

} // namespace

bool clsGeraFebraban::Gera_header() {
    return RecordLayout::compose(*this, kHeader, kTamanho, m_result[int(Registro::Header)]);
}

bool clsGeraFebraban::Gera_content() {
    return RecordLayout::compose(*this, kContent, kTamanho, m_result[int(Registro::Content)]);
}

bool clsGeraFebraban::Gera_footer() {
    return RecordLayout::compose(*this, kFooter, kTamanho, m_result[int(Registro::Footer)]);
}

QString clsGeraFebraban::mensagemErro(Registro r) {
    switch (r) {
    case Registro::Header:
        return QStringLiteral("Erro ao gerar header");
    case Registro::Content:
        return QStringLiteral("Erro ao gerar content");
    case Registro::Footer:
        return QStringLiteral("Erro ao gerar footer");
    }
    return {};
}
