#pragma once

#include <QIcon>

/// What an icon stands for in this program; the value is its code point in the icon font.
enum class Glyph : char16_t {
    Add = 0xe3d4,
    Remove = 0xe32a,
    Search = 0xe30c,
    Open = 0xe5de,
    Release = 0xe398,
    Reveal = 0xe256,
    PackageContents = 0xe390,
    Collection = 0xe260,
    Genre = 0xecac,
    Tag = 0xe478,
    SavedSearch = 0xe0e8,
    LastSearch = 0xe1a0,
    AllProjects = 0xe464,
    ArrangementStatus = 0xe434,
    LyricsStatus = 0xe484,
    RecordingStatus = 0xe75c,
    MixMasterStatus = 0xe228,
    SidebarToggle = 0xec24,
    DetailsToggle = 0xe2ce,
    Settings = 0xe272,
    Delete = 0xe4a6,
    Ignore = 0xe224,
    Collapse = 0xe532,
    Undo = 0xe08a,
    Redo = 0xe08c,
    ScrollToTop = 0xe066,
    Recover = 0xe63a,
    Backup = 0xe00c,
    ImportBackup = 0xe20c,
    ProjectPicture = 0xe2ca,
    Previous = 0xe138,
    Next = 0xe13a,
};

/// The icon of a glyph, sharp at any size and in the colours of the moment. Null where the icon font is
/// absent, so that whoever asks shows its text instead. GUI thread.
QIcon icon(Glyph glyph);
