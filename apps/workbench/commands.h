/// \file
/// Commands of the Workbench that ask something in a dialog and do it.
#pragma once

#include "country_page.h"
#include "mailbox_page.h"
#include "translation_page.h"

/// Asks for the name of a new mailbox, and adds it. \return TRUE: it was added
BOOL AskForMailBox(CWnd* owner, MailBoxPage& page);

/// Lets the user edit the locations, or leads to one more. \return TRUE: he did
BOOL EditLocations(CWnd* owner);
BOOL AddLocationByWizard(CWnd* owner);

/// Lets the user choose the countries that the page lists. \return TRUE: he did
BOOL ChooseCountries(CWnd* owner, CountryPage& page);

/// Leads through the translation of a file. \param folder where it is looked for first; empty: the dialog decides
/// \return as CZoWizardSheet::DoModal
INT_PTR TranslateFileByWizard(CWnd* owner, TranslationPage& page, LPCSTR folder);
