// SPDX-License-Identifier: GPL-3.0-or-later
// Settings values read as numbers: the leading number of any text, the stored port number, the
// radio type and the window's stored width as the start-up reads them.
#include "FuzzInput.h"
#include "MemorySettingsStore.h"
#include "PortCatalog.h"
#include "SettingsStore.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const QString text = QString::fromUtf8(in.rest());

    bool found = true;
    const double n = leadingNumber(text, -1.5, &found);
    if (!found)
        FUZZ_CHECK(n == -1.5);

    MemorySettingsStore store;
    store.setValue(PortKeys::Section, PortKeys::Number, text);
    store.setValue(PortKeys::Section, PortKeys::Device, text);
    store.setValue(PortKeys::RadioSection, PortKeys::RadioType, text);
    const int port = PortCatalog::storedPortNumber(store);
    PortCatalog::deviceFor(port, text);
    // The start-up's reads: the radio type and the window's width as whole numbers.
    const int radioType = store.wholeNumber(PortKeys::RadioSection, PortKeys::RadioType, 1);
    if (!found)
        FUZZ_CHECK(radioType == 1);
    store.setValue(QStringLiteral("Startup"), QStringLiteral("Width"), text);
    store.wholeNumber(QStringLiteral("Startup"), QStringLiteral("Width"), 10410);
    const StartupPortPlan plan = planStartupPort(store, radioType, false);
    FUZZ_CHECK(!(plan.open && plan.ask));
    const double stored = store.number(PortKeys::Section, PortKeys::Number, -1.5);
    FUZZ_CHECK(stored == n || (std::isnan(stored) && std::isnan(n)));
    return 0;
}
