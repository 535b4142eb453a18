// zu_tool_platform.h: what the command zu needs of each platform.
#pragma once

#include "zu_tool.h"

/// Makes the standard streams carry bytes as they are.
void toolPrepareStreams();

/// Tells whether a stream goes to a terminal that takes control sequences.
bool toolIsTerminal( FILE *stream );

/// Tells of the file with this name.
TOOL_FILE toolFindFile( ZU_STRING *name );
/// Tells of the file that a stream comes from or goes to.
TOOL_FILE toolFindFile( FILE *stream );

/// Forgets why a call of the system has failed, or tells it of the last one since then; empty if that is not known.
void toolForgetFailure();
TEXT toolLastFailure();

/// Lets happen what happens where memory is mapped, and what is behind it is not there.
void toolRaiseBusError();
