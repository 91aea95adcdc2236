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
  TheStore = std::make_unique<Store>();
  DatabaseUnpacked = false;
  CurrentSupplierId = CurrentSupplierIndex = CurrentContactId = 0;
  SupplierChanged = FormLinksChanged = LoadingSupplier = ContactChanged = ContactListStale = false;
}

}  // namespace tarvolinex
