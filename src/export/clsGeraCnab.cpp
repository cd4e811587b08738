#include "clsGeraCnab.h"

#include "RecordLayout.h"

namespace {

using F = LayoutField<clsGeraCnab>;
using C = clsGeraCnab;

// clang-format off
constexpr F kHeaderArquivo[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "0000"),
    F::text(8, 8, "0"),
    F::blanks(9, 17),
    F::text(18, 18, "2"),
    F::prop(19, 32, &C::NUM_INSC_EMP),
    F::zeros(33, 52),
    F::prop(53, 57, &C::AGENCIA),
    F::prop(58, 58, &C::DIG_AGENCIA),
    F::prop(59, 64, &C::CONVENIO),
    F::zeros(65, 71),
    F::text(72, 72, "0"),
    F::prop(73, 102, &C::NOME_EMP),
    F::prop(103, 132, &C::NOME_BANCO),
    F::blanks(133, 142),
    F::text(143, 143, "2"),                       // return file
    F::prop(144, 151, &C::DATA_ARQUIVO),
    F::prop(152, 157, &C::HORA_ARQUIVO),
    F::prop(158, 163, &C::NSARQUIVO),
    F::text(164, 166, "040"),                     // layout version
    F::zeros(167, 171),
    F::blanks(172, 191),
    F::text(192, 211, "RETORNO-PRODUCAO    "),
    F::blanks(212, 215),
    F::text(216, 240, "          000            "),
};

constexpr F kHeaderLote[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "0001"),
    F::text(8, 8, "1"),
    F::text(9, 9, "T"),
    F::text(10, 11, "01"),
    F::text(12, 13, "00"),
    F::text(14, 16, "030"),
    F::blanks(17, 17),
    F::text(18, 18, "2"),
    F::text(19, 19, "0"),
    F::prop(20, 33, &C::NUM_INSC_EMP),
    F::zeros(34, 39),
    F::zeros(40, 53),
    F::prop(54, 58, &C::AGENCIA),
    F::prop(59, 59, &C::DIG_AGENCIA),
    F::prop(60, 65, &C::CONVENIO),
    F::zeros(66, 72),
    F::text(73, 73, "0"),
    F::prop(74, 103, &C::NOME_EMP),
    F::blanks(104, 183),
    F::text(184, 185, "00"),
    F::prop(186, 191, &C::NSARQUIVO),
    F::prop(192, 199, &C::DATA_ARQUIVO),
    F::text(200, 240, "0000000000                          00   "),
};

constexpr F kDetalheT[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "0001"),
    F::text(8, 8, "3"),
    F::prop(9, 13, &C::NSREGISTRO),
    F::text(14, 14, "T"),
    F::blanks(15, 15),
    F::text(16, 17, "06"),                        // settlement
    F::zeros(18, 22),
    F::text(23, 23, "0"),
    F::prop(24, 29, &C::CONVENIO),
    F::text(30, 32, "000"),
    F::text(33, 35, "000"),
    F::text(36, 39, "0   "),
    F::prop(40, 41, &C::MODAL_NOSSO_NUM),
    F::prop(42, 56, &C::IDENT_TITULO_BANCO),
    F::text(57, 57, "0"),
    F::text(58, 58, "1"),
    F::zeros(59, 69),
    F::zeros(70, 73),
    F::prop(74, 81, &C::DATA_VENC_TITULO),
    F::prop(82, 96, &C::VALOR_TITULO),
    F::text(97, 99, "000"),
    F::prop(100, 104, &C::AGENCIA),
    F::text(105, 105, "0"),
    F::text(106, 130, "000000000000000          "),
    F::text(131, 132, "09"),                      // currency
    F::text(133, 133, "0"),
    F::zeros(134, 148),
    F::blanks(149, 188),
    F::blanks(189, 198),
    F::zeros(199, 213),
    F::text(214, 223, "000000    "),
    F::blanks(224, 240),
};

constexpr F kDetalheU[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "0001"),
    F::text(8, 8, "3"),
    F::prop(9, 13, &C::NSREGISTRO),
    F::text(14, 14, "U"),
    F::blanks(15, 15),
    F::text(16, 17, "06"),
    F::prop(18, 32, &C::JUROS_MULTA),
    F::zeros(33, 47),
    F::zeros(48, 62),
    F::zeros(63, 77),
    F::prop(78, 92, &C::VALOR_PAGO_SACADO),
    F::prop(93, 107, &C::VALOR_LIQUIDO),
    F::zeros(108, 122),
    F::zeros(123, 137),
    F::prop(138, 145, &C::DATA_ARQUIVO),          // date of the occurrence
    F::prop(146, 153, &C::DATA_ARQUIVO),          // date of the credit
    F::text(154, 157, "0000"),
    F::prop(158, 165, &C::DATA_ARQUIVO),
    F::zeros(166, 180),
    F::zeros(181, 210),
    F::text(211, 213, "000"),
    F::text(214, 240, "00000000000000000000       "),
};

// The counts and totals of the collection kinds (24-92) are written as zeros.
constexpr F kTrailerLote[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "0001"),
    F::text(8, 8, "5"),
    F::blanks(9, 17),
    F::prop(18, 23, &C::QUANT_REG_LOTE),
    F::zeros(24, 29),
    F::zeros(30, 46),
    F::zeros(47, 52),
    F::zeros(53, 69),
    F::zeros(70, 75),
    F::zeros(76, 92),
    F::text(93, 123, "00000000000000000000000        "),
    F::blanks(124, 240),
};

constexpr F kTrailerArquivo[] = {
    F::prop(1, 3, &C::COD_BANCO),
    F::text(4, 7, "9999"),
    F::text(8, 8, "9"),
    F::blanks(9, 17),
    F::text(18, 23, "000001"),                    // one batch
    F::prop(24, 29, &C::QUANT_REG_ARQ),
    F::blanks(30, 240),
};
// clang-format on

static_assert(RecordLayout::isComplete(kHeaderArquivo, clsGeraCnab::kTamanho));
static_assert(RecordLayout::isComplete(kHeaderLote, clsGeraCnab::kTamanho));
static_assert(RecordLayout::isComplete(kDetalheT, clsGeraCnab::kTamanho));
static_assert(RecordLayout::isComplete(kDetalheU, clsGeraCnab::kTamanho));
static_assert(RecordLayout::isComplete(kTrailerLote, clsGeraCnab::kTamanho));
static_assert(RecordLayout::isComplete(kTrailerArquivo, clsGeraCnab::kTamanho));

} // namespace

bool clsGeraCnab::Header_arquivo() {
    return RecordLayout::compose(*this, kHeaderArquivo, kTamanho,
                                 m_result[int(Registro::HeaderArquivo)]);
}

bool clsGeraCnab::Header_lote() {
    return RecordLayout::compose(*this, kHeaderLote, kTamanho, m_result[int(Registro::HeaderLote)]);
}

bool clsGeraCnab::Detalhe_t() {
    return RecordLayout::compose(*this, kDetalheT, kTamanho, m_result[int(Registro::DetalheT)]);
}

bool clsGeraCnab::Detalhe_u() {
    return RecordLayout::compose(*this, kDetalheU, kTamanho, m_result[int(Registro::DetalheU)]);
}

bool clsGeraCnab::Cria_trailer_lote() {
    return RecordLayout::compose(*this, kTrailerLote, kTamanho,
                                 m_result[int(Registro::TrailerLote)]);
}

bool clsGeraCnab::Cria_trailer_arquivo() {
    return RecordLayout::compose(*this, kTrailerArquivo, kTamanho,
                                 m_result[int(Registro::TrailerArquivo)]);
}

QString clsGeraCnab::mensagemErro(Registro r) {
    switch (r) {
    case Registro::HeaderArquivo:
        return QStringLiteral("Erro ao gerar header do CNAB -> 0");
    case Registro::HeaderLote:
        return QStringLiteral("Erro ao gerar header do lote CNAB -> 1");
    case Registro::DetalheT:
        return QStringLiteral("Erro ao gerar Detalhe T");
    case Registro::DetalheU:
        return QStringLiteral("Erro ao gerar Detalhe U");
    case Registro::TrailerLote:
        return QStringLiteral("Erro ao gerar Trailer de Lote");
    case Registro::TrailerArquivo:
        return QStringLiteral("Erro ao gerar Trailer de Arquivo");
    }
    return {};
}
