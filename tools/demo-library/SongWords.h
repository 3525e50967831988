#pragma once

#include <array>

/// What songs are made up of. All texts are UTF-8.
namespace DemoLibrary::SongWords {

inline constexpr auto adjectives = std::to_array<const char*>({
    "Amber",    "Borrowed",  "Broken",  "Burning",  "Careless", "Cold",    "Crooked", "Distant",
    "Early",    "Electric",  "Empty",   "Faded",    "Fearless", "Gentle",  "Golden",  "Hollow",
    "Idle",     "Invisible", "Lazy",    "Little",   "Lonely",   "Lost",    "Lucky",   "Magnetic",
    "Midnight", "Muddy",     "Neon",    "Northern", "Paper",    "Patient", "Plastic", "Quiet",
    "Reckless", "Restless",  "Rusty",   "Sacred",   "Secret",   "Shallow", "Silver",  "Sleepless",
    "Slow",     "Stolen",    "Strange", "Sunken",   "Tangled",  "Tender",  "Velvet",  "Violet",
    "Wasted",   "Wild",
});

inline constexpr auto nouns = std::to_array<const char*>({
    "Afternoon", "Antenna",   "Balcony",  "Ballroom",   "Boulevard",  "Bridges",  "Cathedral",  "Ceilings",
    "Cinema",    "Coastline", "Compass",  "Corridors",  "Daydream",   "Doorbell", "Elevator",   "Embers",
    "Fever",     "Fireflies", "Gasoline", "Ghosts",     "Gravity",    "Harbour",  "Headlights", "Honey",
    "Horizon",   "Hurricane", "Kites",    "Lantern",    "Lighthouse", "Machines", "Magnolia",   "Marble",
    "Matches",   "Meridian",  "Mirrors",  "Motel",      "Nocturne",   "Orchard",  "Parade",     "Pavement",
    "Postcards", "Radio",     "River",    "Satellites", "Shadows",    "Skyline",  "Static",     "Suitcase",
    "Telegram",  "Thunder",   "Tides",    "Tourist",    "Umbrella",   "Voltage",  "Wallpaper",  "Weather",
    "Winter",    "Wolves",
});

inline constexpr auto verbs = std::to_array<const char*>({
    "Call Off",   "Carry",      "Chasing", "Counting",    "Follow",   "Forget",       "Hold",
    "Leaving",    "Letters to", "Losing",  "Meet Me by",  "Remember", "Running From", "Sing to",
    "Talking to", "Turn Off",   "Under",   "Waiting for", "Without",
});

/// What a name collects while the song is being worked on.
inline constexpr auto endings = std::to_array<const char*>({
    " (demo)",
    " v2",
    " v3",
    " FINAL",
    " FINAL final",
    " [rough mix]",
    " (Radio Edit)",
    " - acoustic",
    "_bounce",
    " (feat. Lola)",
    " REMIX",
    " #2",
    " 100%",
    " (new chorus)",
    " – live",
    " {stems}",
    " & strings",
    " old",
});

/// Names that a program which handles names carelessly would trip over.
inline constexpr auto awkwardTitles = std::to_array<const char*>({
    "Don't Wake the Neighbours",
    "It's Only Tuesday ('til Wednesday)",
    "She Said \"Maybe\"",
    "100% Wool",
    "50%_off %1 %2",
    "Brûlé",
    "Überfahrt nach Göteborg",
    "Señorita Lluvia",
    "Fjörður",
    "Žluté kolo",
    "Çay Saati",
    "Ночной трамвай",
    "Зимний вокзал",
    "夜行列車",
    "雨のプラットホーム",
    "밤비 내리는 골목",
    "午夜电台",
    "ليل طويل",
    "שקט בחוץ",
    "Κύματα",
    "रात की रेल",
    "สายฝนเดือนเก้า",
    "[WIP] Glass Elevator",
    "(untitled) [2] {3}",
    "Vol. 2.5",
    "Mr. Postman's Daughter Jr.",
    "$5 Guitar & a $500 Amp",
    "Tabs; Semicolons -- Dashes",
    "~home\\studio",
    "- - -",
    "@ the Diner, 3 a.m.",
    "Blue Tide 🌊",
    "What If?*",
    "Rock'n'Roll 'n' Stuff",
    "  two spaces  first",
    "A Rather Long Story About the Summer We Spent Rebuilding a Piano on the Fourth Floor Without an "
    "Elevator and What "
    "the Neighbours Had to Say About It",
    "Übermäßig langer Arbeitstitel für das Zwischenspiel vor dem dritten Refrain (bitte später umbenennen, "
    "wirklich)",
});

inline constexpr auto artists = std::to_array<const char*>({
    "Mara Lindqvist",
    "The Paper Harbour",
    "Noé Fabre",
    "荒巻光司",
    "Ирина Седова",
    "Velvet Cartographers",
    "DJ Tangentbord",
    "O'Malley & Daughters",
    "Luz y Sal",
    "Tin Roof Choir",
    "Hannah Großmann",
    "Sundial Kids",
    "Ø Nord",
    "Casa Amarela",
    "Pocket Orchestra",
    "Low Ceilings",
    "Eleni & the Tides",
    "Marcus Oyelaran",
    "Fourth Floor Piano",
    "Kid Meridian",
    "Señal Débil",
    "Anouk Verhoeven",
    "The 2nd Hand Amps",
    "Jun-ho Baek",
});

inline constexpr auto albums = std::to_array<const char*>({
    "Night Maps",
    "Kitchen Recordings",
    "Second Hand Weather",
    "EP1",
    "EP2 (unreleased)",
    "Côte Ouest",
    "Slow Machines",
    "Songs for an Empty Pool",
    "Live at the Boiler House",
    "B-Sides & \"Rarities\"",
});

inline constexpr auto alternatives = std::to_array<const char*>({
    "Acoustic",
    "Radio Edit",
    "No Drums",
    "Half Time",
    "Instrumental",
    "Longer Intro",
    "Chorus First",
    "Mix B",
    "Label's Cut",
    "Tape",
    "Piano Only",
    "120 → 96",
});

inline constexpr auto recordings = std::to_array<const char*>({
    "Lead Vocal",
    "Backing Vocal",
    "Gtr DI",
    "Gtr Amp",
    "Bass DI",
    "Kick In",
    "Snare Top",
    "Overheads",
    "Room",
    "Piano L",
    "Piano R",
    "Synth Print",
    "Shaker",
    "Strings",
    "Trumpet",
    "Field Recording",
    "Talkback",
    "Loop 90",
});

inline constexpr auto keys = std::to_array<const char*>({
    "C",
    "G",
    "D",
    "A",
    "E",
    "B",
    "F#",
    "C#",
    "Db",
    "Ab",
    "Eb",
    "Bb",
    "F",
    "G#",
    "D#",
});

} // namespace DemoLibrary::SongWords
