#pragma once

// Dates, calendars and numbers of the screens in Brazilian Portuguese, whatever the machine's
// language: a counter set up in English (or LANG=C) still shows "novembro" and "seg".
namespace BrazilianLocale {
void apply();
}
