// SPDX-License-Identifier: GPL-3.0-or-later
// A page's WebSocket message: any text is a command within its ranges or refused with a reason.
#include "FuzzInput.h"
#include "PanelCommand.h"
#include "RadioRange.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzInput in(data, size);
    const ParsedPanelCommand p = parsePanelCommand(in.rest());
    FUZZ_CHECK(p.command.has_value() != !p.error.isEmpty());
    if (p.command && p.command->kind == PanelCommand::Kind::Tune)
        FUZZ_CHECK(p.command->hz >= RadioRange::RxLowHz && p.command->hz <= RadioRange::RxHighHz);
    if (p.command && p.command->kind == PanelCommand::Kind::Step)
        FUZZ_CHECK(p.command->hz != 0 && qAbs(p.command->hz) <= PanelCommand::MaxStepHz);
    return 0;
}
