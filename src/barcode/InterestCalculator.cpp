#include "InterestCalculator.h"

#include "SystemTexts.h"

InterestCalculator::Result InterestCalculator::calcular(const Input& in) {
    Result r;
    if (in.opcao < 1 || in.opcao > 3) {
        r.erro = SystemTexts::text(SystemText::OpcaoNaoSelecionada);
        return r;
    }
    if (!in.vencimento.isValid() || !in.hoje.isValid() || in.vencimento > in.hoje) {
        r.erro = SystemTexts::text(SystemText::VencimentoPosterior);
        return r;
    }
    const auto& prestacao = in.prestacao;
    if (!prestacao || prestacao->isNegative() || prestacao->isZero()) {
        r.erro = SystemTexts::text(SystemText::PrestacaoNaoInformada);
        return r;
    }
    const std::optional<double> taxa = in.taxa && !in.taxa->isNegative()
                                           ? std::optional<double>(in.taxa->toDouble())
                                           : std::nullopt;
    if (!taxa) {
        r.erro = SystemTexts::text(SystemText::JurosNaoInformado);
        return r;
    }
    const auto meses = Acrescimos::Meses_atraso(in.vencimento, in.hoje);
    if (!meses || !Acrescimos::calculavel(in.vencimento, *prestacao)) {
        r.erro = SystemTexts::text(SystemText::AtrasoGrandeDemais);
        return r;
    }
    r.dias = int(in.vencimento.daysTo(in.hoje));
    r.meses = *meses;
    const double base = prestacao->toDouble();
    if (in.opcao == 1) {
        r.juros = Money::fromDoubleRounded(base * (*taxa * r.dias) / 100.0);
    } else if (in.opcao == 2) {
        float fine = float(*taxa * r.dias);
        if (fine > 10.0f)
            fine = 10.0f;
        r.multa = Money::fromDoubleRounded(base * double(fine) / 100.0);
        r.juros = Money::fromDoubleRounded(base * r.meses / 100.0);
    } else {
        r.multa = Money::fromDoubleRounded(base * 2.0 / 100.0);
        r.juros = Money::fromDoubleRounded(base * r.meses / 100.0);
    }
    r.total = *prestacao + r.multa + r.juros;
    if (!r.total.withinLimit())
        r.erro = SystemTexts::text(SystemText::AtrasoGrandeDemais);
    return r;
}
