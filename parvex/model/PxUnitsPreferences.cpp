// The "Units" page of the preferences dialog. Placeholder until the UI kit's preferences dialog lands.
#include "PxUnits.h"

void PxUnits::ConnectPreferences() {}
void PxUnits::PreferenceOpen(PtPreferencesDialog*) {}
void PxUnits::PreferencesDialogClosed(bool) {}
