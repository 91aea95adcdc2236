#include "core/Globals.h"

namespace tarvolinex {

void ResetGlobals() {
  AppFolder.clear();
  DataFolder.clear();
  ChosenDataFolder.clear();
  WebServer.clear();
  CustomerReference.clear();
  ErrorShown = false;
  CalculatorPreferences = {};
  SupplierCalcSettings = {};
  Quote = {};
  ShownQuoteMode = 0;
  ShownQuoteBox = -1;
  LoadedSupplierFields.clear();
  RateCardFault.clear();
  Removed = {};
  TheStore = std::make_unique<Store>();
  DatabaseUnpacked = false;
  CopiedDatabase.clear();
  CurrentSupplierId = CurrentSupplierIndex = CurrentContactId = 0;
  SupplierChanged = FormLinksChanged = LoadingSupplier = ContactChanged = ContactListStale = false;
  SendType = 0;
  SendConfirmed = IncludeInstructions = Working = StopRequested = false;
  Instructions = {};
}

}  // namespace tarvolinex
