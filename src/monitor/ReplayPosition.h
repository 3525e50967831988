#pragma once

/// Where the next start takes up: in the history of file events, and in a search. Kept in the settings; from
/// any thread.
namespace Stemhaven::ReplayPosition {

/// The stored id, or that of the present where none is stored.
unsigned long long stored();

/// Stores id unless a greater one is stored.
void advanceTo(unsigned long long id);

/// The settings have come from elsewhere, with a catalogue of their time. Where they lack an id, or its time
/// is after present, as an id of another system may be, everything is replayed.
void adopt(unsigned long long present);

/// At quit: oldestUnresolved is the id of the oldest move that has not been resolved, -1 when there is none.
/// Goes back to it, so that the next start sees the move again, at most three times in a row.
void settle(long long oldestUnresolved);

/// Whether a search was left unfinished.
bool searchWasInProgress();
void rememberSearch(bool isInProgress);

} // namespace Stemhaven::ReplayPosition
