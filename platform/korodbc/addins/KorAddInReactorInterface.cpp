#include <korodbc/addins/KorAddInReactorInterface.h>

void KorAddInReactorInterface::commandRegistered(const KorString&) {}
void KorAddInReactorInterface::commandDeregistered(const KorString&) {}
