#pragma once

#include "project/ProjectDetails.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The small property list that the program leaves in each bundle it has recorded: the record's id, and the
/// identity that the bundle had then. It tells a moved project from a copied one.
///
/// A bundle, its Resources folder or a note that is a link leads into what may be another bundle, so nothing
/// is read, written or removed through one; links above the bundle are followed. A note that is empty, no
/// plain file or larger than 4 MiB counts as none, and so does one whose identity is no short text. All
/// functions may be called from any thread.
namespace Stemhaven {

struct NoteToWrite {
    ProjectDetails details;
    std::int64_t projectId = 0;
};

/// Writes each note in one step, so that none is ever seen half written, and waits until the new ones are on
/// the disk, so that none is half written after a power cut. Waiting for many together costs far less than
/// for one after the other; 64 is a good number.
///
/// A note that says the same already is left alone. A bundle that cannot be written is passed over in
/// silence; an invalid identity is logged and nothing is written, nor is it where the bundle at the path is
/// not the one with the identity.
void writeNotes(const std::vector<NoteToWrite>& notes);

/// As writeNotes, for one note.
void updateStemhavenPlist(const ProjectDetails& details, std::int64_t projectId);

/// The note's path, in the file system's encoding, when there is one. Invalid details or an invalid identity
/// give nothing without a look at the disk.
std::optional<std::string> hasStemhavenPlist(const ProjectDetails& details);

/// Whether the bundle at path has no note although one could be written there: the program was ended between
/// the record and its note, or the disk was full.
bool lacksNote(const QString& bundlePath);

/// The record's id and the identity's text from the note. Nothing when there is no note or it lacks them; a
/// note that cannot be read or is no property list throws Plist::Error or std::bad_cast.
std::optional<std::pair<std::int64_t, std::string>> loadStemhavenPlistDetails(const ProjectDetails& details);

} // namespace Stemhaven
