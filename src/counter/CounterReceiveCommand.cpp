// caixa receber: one customer's payment from the command line.
#include "CliArgs.h"
#include "CliCommand.h"

#include <QTextStream>

int runCaixaReceber(CliEnv& e)
{
    e.err << "caixa receber: ainda não disponível.\n";
    return ExitRefused;
}
