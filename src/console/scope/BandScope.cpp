#include "BandScope.h"

#include "ScopeHost.h"

#include <QPushButton>

// Placeholder until the scope lands: the frame exists, its keys do nothing.
BandScope::BandScope(ScopeHost& host, QWidget* parent) : QWidget(parent), host_(host) {}
BandScope::~BandScope() = default;
void BandScope::keyClick(int) {}
QPushButton* BandScope::key(int) const { return nullptr; }
void BandScope::startRedraw() {}
void BandScope::presetLists() {}
int BandScope::selectedReceiver() const { return 1; }
