#include "registration.h"

#include "program.h"

int RunProvision(LPCSTR arguments)
{
    Program provision;
    return provision.Start("ZoProvision.exe", arguments) ? provision.WaitForEnd() : -1;
}
