#pragma once

#include <cctype>
#include <ostream>
#include <string>

/** What an engineer may expect of the presets; docs/presets.md lists the sentences. */
namespace PresetSentences
{
/** What an engineer would say of two presets: at equal loudness the first lies above the second by at least so many dB,
    in every band from one frequency to another. */
struct Comparison
{
    const char* sentence;
    const char* more;
    const char* less;
    int fromHz;
    int toHz;
    float atLeastDb;
};

/** What an engineer would say of one preset: the mean of some of its bands lies above that of others. */
struct Outline
{
    const char* sentence;
    const char* preset;
    int strongFromHz;
    int strongToHz;
    int weakFromHz;
    int weakToHz;
    float atLeastDb;
};

// clang-format off
inline constexpr Comparison comparisons[] {
    { "A balanced master opens further from 4 to 15 kHz than a warm pop mix.",
      "PRESET/BALANCED MASTER", "POP/WARM", 4000, 15000, 1.0f },
    { "A hard rock mix has more guitar from 640 Hz to 4 kHz than a balanced master.",
      "ROCK/HARD", "PRESET/BALANCED MASTER", 640, 4000, 2.0f },

    { "A metal bass has more pick from 2 to 6 kHz than a clean rock bass.",
      "BASS/METAL", "BASS/CLEAN ROCK", 2000, 6000, 3.0f },
    { "A metal bass has its low mids scooped where a gritty one is full.",
      "BASS/GRITTY ROCK", "BASS/METAL", 320, 1000, 2.0f },
    { "A gritty bass growls more from 1 to 3 kHz than a clean rock bass.",
      "BASS/GRITTY ROCK", "BASS/CLEAN ROCK", 1000, 3000, 1.0f },
    { "Fret and finger noise sound above 2 kHz on a clean rock bass, not on a dark pop bass.",
      "BASS/CLEAN ROCK", "BASS/DARK POP", 2000, 6000, 0.5f },
    { "Strings click from 2 to 6 kHz; a filtered synthesiser bass does not.",
      "BASS/CLEAN ROCK", "BASS/POP BASS SYNTH", 2000, 6000, 3.0f },
    { "A synthesiser bass has fuller mids than fingers near the neck.",
      "BASS/POP BASS SYNTH", "BASS/SOFT POP BASS", 640, 4000, 1.5f },
    { "Even a soft bass guitar has more overtones than an 808.",
      "BASS/SOFT POP BASS", "BASS/808", 320, 3000, 6.0f },

    { "A crisp electronic kit is brighter from 3 to 15 kHz than a dark pop kit.",
      "DRUMS/FULL KIT CRISP ELECTRONIC", "DRUMS/FULL KIT DARK POP", 3000, 15000, 4.0f },
    { "A clean tight pop kit has more cymbal from 6 to 15 kHz than a live rock kit.",
      "DRUMS/FULL KIT CLEAN TIGHT POP", "DRUMS/FULL KIT LIVE ROCK", 6000, 15000, 1.0f },
    { "A live room fills a kit's low mids, close microphones leave them clean.",
      "DRUMS/FULL KIT LIVE ROCK", "DRUMS/FULL KIT CLEAN TIGHT POP", 320, 1000, 1.0f },
    { "A rock kit's large shells speak louder at 320 Hz than those of a pop rock kit.",
      "DRUMS/FULL KIT ROCK", "DRUMS/FULL KIT POP ROCK", 320, 640, 1.0f },
    { "A pop rock kit's cymbals are more open than a rock kit's.",
      "DRUMS/FULL KIT POP ROCK", "DRUMS/FULL KIT ROCK", 6000, 15000, 0.5f },
    { "A rock kit cracks from 2 to 4 kHz where a dark pop kit is damped.",
      "DRUMS/FULL KIT ROCK", "DRUMS/FULL KIT DARK POP", 2000, 4000, 2.0f },
    { "A bright snare has more wire from 3 to 15 kHz than a deep one.",
      "DRUMS/SNARE BRIGHT", "DRUMS/SNARE DEEP", 3000, 15000, 4.0f },
    { "A deep snare has more shell at 320 and 640 Hz than a bright one.",
      "DRUMS/SNARE DEEP", "DRUMS/SNARE BRIGHT", 320, 640, 3.0f },
    { "A pop snare's opened top lies above a live rock snare's.",
      "DRUMS/SNARE POP", "DRUMS/SNARE LIVE ROCK", 6000, 15000, 3.0f },
    { "A live rock snare has more wood below 1 kHz than a tight pop snare.",
      "DRUMS/SNARE LIVE ROCK", "DRUMS/SNARE POP", 320, 1000, 2.0f },
    { "A live kick's beater stands out at 3 and 4 kHz against an electronic kick.",
      "DRUMS/KICK LIVE ROCK", "DRUMS/KICK ELECTRONIC", 3000, 4000, 6.0f },
    { "A house kick has more punch from 320 Hz to 1 kHz than a bare electronic one.",
      "DRUMS/KICK HOUSE", "DRUMS/KICK ELECTRONIC", 320, 1000, 3.0f },
    { "A pop kick is scooped where a live one is boxy.",
      "DRUMS/KICK LIVE ROCK", "DRUMS/KICK POP", 320, 1000, 2.0f },
    { "Toms carry more tone from 320 Hz to 1 kHz than a live kick.",
      "DRUMS/TOMS", "DRUMS/KICK LIVE ROCK", 320, 1000, 3.0f },
    { "Overheads hold the cymbals that a tom microphone does not.",
      "DRUMS/OVERHEADS", "DRUMS/TOMS", 3000, 15000, 6.0f },
    { "Claps have no shell below: a snare has more at 320 Hz.",
      "DRUMS/SNARE BRIGHT", "DRUMS/CLAPS", 320, 320, 3.0f },

    { "An acoustic guitar shimmers above 6 kHz, past what a clean amplifier gives.",
      "GUITAR/ACOUSTIC", "GUITAR/CLEAN ELECTRIC", 6000, 15000, 3.0f },
    { "A clean electric guitar is more open from 10 kHz on than a metal guitar.",
      "GUITAR/CLEAN ELECTRIC", "GUITAR/METAL", 10000, 15000, 3.0f },
    { "A metal guitar has more fizz from 2 to 4 kHz than a clean one.",
      "GUITAR/METAL", "GUITAR/CLEAN ELECTRIC", 2000, 4000, 2.0f },
    { "Metal scoops the mids at 640 Hz and 1 kHz that a wall of rock guitars fills.",
      "GUITAR/MODERN ROCK", "GUITAR/METAL", 640, 1000, 1.0f },
    { "A wall of layered guitars is thicker at 320 and 640 Hz than a chiming one.",
      "GUITAR/MODERN ROCK", "GUITAR/BRITPOP ELECTRIC", 320, 640, 1.5f },
    { "A small Britpop amplifier chimes more from 2 to 6 kHz than a modern rock stack.",
      "GUITAR/BRITPOP ELECTRIC", "GUITAR/MODERN ROCK", 2000, 6000, 1.0f },
    { "Distortion holds up harmonics from 1 to 4 kHz that a clean guitar lets fall.",
      "GUITAR/DISTORTED ELECTRIC", "GUITAR/CLEAN ELECTRIC", 1000, 4000, 2.0f },
    { "More drive brings more edge: distorted over gritty from 2 to 4 kHz.",
      "GUITAR/DISTORTED ELECTRIC", "GUITAR/GRITTY ELECTRIC", 2000, 4000, 0.5f },
    { "A guitar at the edge of breaking up has more bite at 2 and 3 kHz than a clean one.",
      "GUITAR/GRITTY ELECTRIC", "GUITAR/CLEAN ELECTRIC", 2000, 3000, 1.0f },
    { "Funk strokes have their low mids taken out, a clean guitar keeps them.",
      "GUITAR/CLEAN ELECTRIC", "GUITAR/FUNKY LEAD", 320, 640, 1.5f },
    { "A guitar straight into the desk is brighter above 6 kHz than one through a rock cabinet.",
      "GUITAR/FUNKY LEAD", "GUITAR/MODERN ROCK", 6000, 15000, 3.0f },
    { "A clean pop lead has sheen above 10 kHz, a distorted guitar has none.",
      "GUITAR/CLEAN POP LEAD", "GUITAR/DISTORTED ELECTRIC", 10000, 15000, 3.0f },

    { "Violins carry a string section further above 1 kHz than one cello.",
      "OTHER/FULL STRING SECTION", "OTHER/CELLO", 2000, 15000, 1.5f },
    { "A cello is warmer at 320 Hz than the whole section.",
      "OTHER/CELLO", "OTHER/FULL STRING SECTION", 320, 320, 1.0f },
    { "One trumpet alone is brighter from 6 to 15 kHz than a section with trombones and saxophones.",
      "OTHER/TRUMPET", "OTHER/POP HORN SECTION", 6000, 15000, 1.0f },
    { "Trombones and saxophones give a section more at 320 Hz than a trumpet has.",
      "OTHER/POP HORN SECTION", "OTHER/TRUMPET", 320, 320, 3.0f },
    { "Horns blown hard have more brass from 1 to 10 kHz than a string section.",
      "OTHER/POP HORN SECTION", "OTHER/FULL STRING SECTION", 1000, 10000, 2.0f },
    { "A grand below the strings adds body at 320 Hz to those of a section.",
      "OTHER/PIANO & STRINGS", "OTHER/FULL STRING SECTION", 320, 320, 0.5f },
    { "A grand and a section have more top from 4 to 15 kHz than one cello.",
      "OTHER/PIANO & STRINGS", "OTHER/CELLO", 4000, 15000, 1.0f },
    { "Pitched-up chops are brighter from 4 to 15 kHz than an instrumental stem.",
      "OTHER/VOCAL CHOPS", "OTHER/DENSE MUSIC STEM", 4000, 15000, 1.0f },
    { "A dense stem is fuller at 320 and 640 Hz than vocal chops.",
      "OTHER/DENSE MUSIC STEM", "OTHER/VOCAL CHOPS", 320, 640, 1.0f },

    { "A grand with its lid open is clearer above 2 kHz than felt under a closed one.",
      "PIANO/RICH CLEAR", "PIANO/DARK POP", 2000, 15000, 3.0f },
    { "Pop keys cut through from 2 to 10 kHz where a rich grand leaves room.",
      "PIANO/POP KEYS", "PIANO/RICH CLEAR", 2000, 10000, 1.0f },
    { "A rich grand has more body at 320 and 640 Hz than pop keys.",
      "PIANO/RICH CLEAR", "PIANO/POP KEYS", 320, 640, 1.0f },
    { "Reeds bark from 2 to 4 kHz, tines do not.",
      "PIANO/ELECTRIC", "PIANO/RHODES", 2000, 4000, 2.0f },
    { "Tines are rounder at 320 and 640 Hz than reeds.",
      "PIANO/RHODES", "PIANO/ELECTRIC", 320, 640, 0.5f },
    { "A driven organ horn carries further from 2 to 6 kHz than a Rhodes.",
      "PIANO/HAMMOND ORGAN", "PIANO/RHODES", 2000, 6000, 2.0f },
    { "A rotary cabinet shuts above 6 kHz, a grand does not.",
      "PIANO/RICH CLEAR", "PIANO/HAMMOND ORGAN", 6000, 15000, 3.0f },
    { "Tape takes the top of a seventies piano that a modern grand keeps.",
      "PIANO/RICH CLEAR", "PIANO/70s ROCK", 4000, 15000, 2.0f },
    { "A rock piano's forward mids lie above those of a felt one.",
      "PIANO/70s ROCK", "PIANO/DARK POP", 1000, 4000, 1.5f },

    { "Saws with the filter open are brighter from 3 to 15 kHz than a brass patch.",
      "SYNTHS/SAW LEAD", "SYNTHS/BRASS LEAD", 3000, 15000, 2.0f },
    { "A half-closed filter leaves a brass patch more weight at 320 Hz than open saws.",
      "SYNTHS/BRASS LEAD", "SYNTHS/SAW LEAD", 320, 320, 1.0f },
    { "A guitar cabinet takes the top of a rock synthesiser that a pop pad keeps.",
      "SYNTHS/POP", "SYNTHS/ROCK", 10000, 15000, 3.0f },
    { "A lead cuts through from 2 to 4 kHz over a pad.",
      "SYNTHS/LEAD", "SYNTHS/POP", 2000, 4000, 2.0f },
    { "A rich pluck has the body that a pop pluck leaves out.",
      "SYNTHS/RICH PLUCK", "SYNTHS/POP PLUCK", 320, 1000, 1.0f },
    { "A pop pluck's attack clicks more from 3 to 15 kHz than a rich one's.",
      "SYNTHS/POP PLUCK", "SYNTHS/RICH PLUCK", 3000, 15000, 1.5f },
    { "A dub drop growls from 2 to 4 kHz where a pad stays soft.",
      "SYNTHS/DUB DROP", "SYNTHS/POP", 2000, 4000, 1.0f },

    { "A female pop voice is brighter from 3 to 15 kHz than a male one.",
      "VOCALS/FEMALE POP", "VOCALS/MALE POP", 3000, 15000, 1.0f },
    { "A male R&B voice has more chest at 320 and 640 Hz than a female pop voice.",
      "VOCALS/MALE R&B", "VOCALS/FEMALE POP", 320, 640, 2.0f },
    { "A clear male pop voice lies above a dark one from 2 to 15 kHz.",
      "VOCALS/MALE POP", "VOCALS/MALE DARK POP", 2000, 15000, 2.0f },
    { "A rapper's consonants stand out from 2 to 4 kHz against a smooth R&B voice.",
      "VOCALS/MALE RAP", "VOCALS/MALE R&B", 2000, 4000, 1.5f },
    { "A belted rock voice has more edge from 2 to 6 kHz than a jazz voice.",
      "VOCALS/FEMALE ROCK", "VOCALS/FEMALE JAZZ", 2000, 6000, 2.0f },
    { "Close jazz singing is warmer from 320 to 640 Hz than belting.",
      "VOCALS/FEMALE JAZZ", "VOCALS/FEMALE ROCK", 320, 640, 0.5f },
    { "Female backing voices are thinner below 1 kHz than a female R&B lead.",
      "VOCALS/FEMALE R&B", "VOCALS/FEMALE BACKING", 320, 640, 1.5f },
    { "Male backing voices step back from 320 Hz to 6 kHz behind their lead.",
      "VOCALS/MALE POP", "VOCALS/MALE POP BACKING", 320, 6000, 0.5f },
    { "Breath lies above 10 kHz in an R&B voice, more than in a rock voice.",
      "VOCALS/FEMALE R&B", "VOCALS/FEMALE ROCK", 15000, 18000, 0.5f },
    { "A rough rock voice has more grit from 1 to 4 kHz than the whole vocal bus.",
      "VOCALS/MALE ROCK", "VOCALS/MALE VOCAL BUS", 1000, 4000, 1.0f },
    { "Britpop singing is nasal: forward at 1 kHz against a pop voice.",
      "VOCALS/MALE BRITPOP", "VOCALS/MALE POP", 1000, 1000, 1.0f },
    { "A pop voice has more top from 10 to 15 kHz than dull Britpop singing.",
      "VOCALS/MALE POP", "VOCALS/MALE BRITPOP", 10000, 15000, 0.5f },
    { "A pop voice has more body at 320 Hz than thin Britpop singing.",
      "VOCALS/MALE POP", "VOCALS/MALE BRITPOP", 320, 320, 1.0f },
    { "Rock backing is shouted from behind: its lead has more from 2 to 6 kHz.",
      "VOCALS/MALE ROCK", "VOCALS/MALE ROCK BACKING", 2000, 6000, 1.0f },

    { "Dubstep growls from 320 Hz to 3 kHz where trap leaves room for the 808.",
      "ELECTRONIC/DUBSTEP", "ELECTRONIC/TRAP", 320, 3000, 1.5f },
    { "Trance has more open hats from 10 to 15 kHz than dubstep.",
      "ELECTRONIC/TRANCE", "ELECTRONIC/DUBSTEP", 10000, 15000, 2.0f },
    { "Four on the floor has more open hats at 10 and 15 kHz than dubstep.",
      "ELECTRONIC/DANCE", "ELECTRONIC/DUBSTEP", 10000, 15000, 1.0f },
    { "Hardstyle's distorted kick fills 640 Hz to 3 kHz more than EDM does.",
      "ELECTRONIC/HARDSTYLE", "ELECTRONIC/EDM", 640, 3000, 1.0f },
    { "Drum and bass has faster, brighter breaks from 6 to 15 kHz than moombahton.",
      "ELECTRONIC/DRUM & BASS", "ELECTRONIC/MOOMBAHTON", 6000, 15000, 0.5f },
    { "Trance pads fill 320 and 640 Hz, which drum and bass leaves to the bass line.",
      "ELECTRONIC/TRANCE", "ELECTRONIC/DRUM & BASS", 320, 640, 1.0f },
    { "White noise and saws make EDM brighter from 6 to 15 kHz than dubstep.",
      "ELECTRONIC/EDM", "ELECTRONIC/DUBSTEP", 6000, 15000, 0.5f },

    { "Sampled loops fill the low mids of East Coast hip hop, new productions leave them out.",
      "HIP HOP/EAST COAST", "HIP HOP/CONTEMPORARY", 320, 1000, 2.0f },
    { "Today's hip hop has hats above 10 kHz that old skool vinyl has not.",
      "HIP HOP/CONTEMPORARY", "HIP HOP/OLD SKOOL", 10000, 15000, 1.0f },
    { "Gangsta rap pushes the voice from 2 to 4 kHz over today's 808 beats.",
      "HIP HOP/GANGSTA RAP", "HIP HOP/CONTEMPORARY", 2000, 4000, 1.0f },
    { "Pop rap has more gloss from 6 to 15 kHz than dusty East Coast breaks.",
      "HIP HOP/POP RAP", "HIP HOP/EAST COAST", 6000, 15000, 1.5f },
    { "Grime is colder at 320 Hz than gangsta rap.",
      "HIP HOP/GANGSTA RAP", "HIP HOP/GRIME", 320, 320, 1.0f },

    { "Commercial house is brighter from 2 to 15 kHz than deep house.",
      "HOUSE/COMMERCIAL", "HOUSE/DEEP", 2000, 15000, 1.5f },
    { "Electro house buzzes from 1 to 3 kHz over progressive pads.",
      "HOUSE/ELECTRO", "HOUSE/PROGRESSIVE", 1000, 3000, 1.5f },
    { "Progressive pads are fuller from 320 Hz to 1 kHz than dry tech house.",
      "HOUSE/PROGRESSIVE", "HOUSE/TECH", 320, 1000, 1.0f },
    { "Future house has more air from 10 to 15 kHz than classic house.",
      "HOUSE/FUTURE", "HOUSE/CLASSIC", 10000, 15000, 1.5f },
    { "Early converters keep classic house duller above 6 kHz than commercial house.",
      "HOUSE/COMMERCIAL", "HOUSE/CLASSIC", 6000, 15000, 1.5f },
    { "Tropical house has a softer presence from 2 to 4 kHz than commercial house.",
      "HOUSE/COMMERCIAL", "HOUSE/TROPICAL", 2000, 4000, 1.0f },

    { "K pop is glossier from 6 to 15 kHz than contemporary pop.",
      "OTHER/K POP", "POP/CONTEMPORARY", 6000, 15000, 0.5f },
    { "Reggaeton has a club's top and is brighter from 6 to 15 kHz than country.",
      "OTHER/REGGAETON", "OTHER/COUNTRY", 6000, 15000, 0.5f },
    { "Country's acoustic guitars fill 320 Hz to 1 kHz, which reggaeton leaves to the drum machine.",
      "OTHER/COUNTRY", "OTHER/REGGAETON", 320, 1000, 1.0f },
    { "Metal mixes have more guitar edge and beater click from 3 to 6 kHz than funk.",
      "OTHER/METAL", "OTHER/FUNK", 3000, 6000, 1.0f },
    { "Funk has fuller mids at 640 Hz and 1 kHz than scooped metal.",
      "OTHER/FUNK", "OTHER/METAL", 640, 1000, 1.5f },
    { "An orchestra in a hall is far softer from 3 to 15 kHz than K pop.",
      "OTHER/K POP", "OTHER/ORCHESTRAL", 3000, 15000, 3.0f },
    { "Disco's hats lie above 6 kHz, where Motown was made for small radios.",
      "OTHER/DISCO", "OTHER/MOTOWN", 6000, 15000, 1.5f },
    { "Motown has more mids at 1 and 2 kHz than disco.",
      "OTHER/MOTOWN", "OTHER/DISCO", 1000, 2000, 1.5f },
    { "Jazz is left softer from 2 to 6 kHz than funk.",
      "OTHER/FUNK", "OTHER/JAZZ", 2000, 6000, 2.0f },
    { "A soul band is warmer from 320 Hz to 1 kHz than reggaeton.",
      "OTHER/SOUL", "OTHER/REGGAETON", 320, 1000, 2.0f },
    { "Reggae puts the bass first: soul has more from 320 Hz to 4 kHz.",
      "OTHER/SOUL", "OTHER/REGGAE", 320, 4000, 1.5f },

    { "A warm pop mix has more at 320 and 640 Hz than a contemporary one.",
      "POP/WARM", "POP/CONTEMPORARY", 320, 640, 1.0f },
    { "A contemporary pop mix is brighter from 3 to 15 kHz than a warm one.",
      "POP/CONTEMPORARY", "POP/WARM", 3000, 15000, 1.0f },
    { "Guitars fill 320 Hz to 2 kHz in pop rock more than in dance pop.",
      "POP/ROCK", "POP/DANCE", 320, 2000, 1.5f },
    { "Dance pop has more top from 10 to 15 kHz than pop rock.",
      "POP/DANCE", "POP/ROCK", 10000, 15000, 1.5f },
    { "Hip hop under a pop voice leaves mids from 320 Hz to 2 kHz to no guitar.",
      "POP/ROCK", "POP/HIP HOP", 320, 2000, 2.0f },
    { "Bright percussion opens electronic pop from 6 to 15 kHz over a warm mix.",
      "POP/ELECTRONIC", "POP/WARM", 6000, 15000, 1.5f },
    { "Latin percussion has more presence from 2 to 4 kHz than analogue pads.",
      "POP/LATIN", "POP/SYNTH", 2000, 4000, 2.0f },
    { "Analogue pads are fuller at 320 and 640 Hz than an airy contemporary pop mix.",
      "POP/SYNTH", "POP/CONTEMPORARY", 320, 640, 1.0f },

    { "Contemporary R&B has breath above 10 kHz that a band to tape has not.",
      "R&B/CONTEMPORARY", "R&B/OLD SKOOL", 10000, 15000, 1.0f },
    { "The nineties layered more voices from 320 Hz to 2 kHz than today's sparse R&B.",
      "R&B/90's", "R&B/CONTEMPORARY", 320, 2000, 1.5f },
    { "Rhythm and blues has horns and shouting from 1 to 4 kHz over old skool R&B.",
      "R&B/RHYTHM & BLUES", "R&B/OLD SKOOL", 1000, 4000, 1.0f },
    { "The nineties have more top from 10 to 15 kHz than rhythm and blues.",
      "R&B/90's", "R&B/RHYTHM & BLUES", 10000, 15000, 1.0f },

    { "Hard rock has more guitar edge from 2 to 4 kHz than indie.",
      "ROCK/HARD", "ROCK/INDIE", 2000, 4000, 1.5f },
    { "Contemporary rock is brighter from 3 to 15 kHz than classic rock.",
      "ROCK/CONTEMPORARY", "ROCK/CLASSIC", 3000, 15000, 1.5f },
    { "Classic rock has more body at 320 and 640 Hz than electronic rock.",
      "ROCK/CLASSIC", "ROCK/ELECTRONIC", 320, 640, 1.5f },
    { "Indie's loose room fills 320 and 640 Hz more than a contemporary rock mix.",
      "ROCK/INDIE", "ROCK/CONTEMPORARY", 320, 640, 1.5f },
    { "Machines give electronic rock more air from 10 to 15 kHz than alternative rock.",
      "ROCK/ELECTRONIC", "ROCK/ALTERNATIVE", 10000, 15000, 1.5f },
    { "Progressive rock leaves the guitars' presence from 1 to 4 kHz below that of hard rock.",
      "ROCK/HARD", "ROCK/PROGRESSIVE", 1000, 4000, 1.0f },
    { "Trance has more top from 6 to 15 kHz than classic rock.",
      "ELECTRONIC/TRANCE", "ROCK/CLASSIC", 6000, 15000, 3.0f },

    { "A modern rock master has more guitar from 320 Hz to 3 kHz than dance pop.",
      "STAR ENGINEERS/MODERN ROCK MASTER", "STAR ENGINEERS/DANCE-POP GURU", 320, 3000, 3.0f },
    { "Dance pop is brighter from 3 to 15 kHz than pop soul.",
      "STAR ENGINEERS/DANCE-POP GURU", "STAR ENGINEERS/POP-SOUL CHIEF", 3000, 15000, 1.0f },
    { "Expensive pop is smoother from 2 to 4 kHz than dance pop.",
      "STAR ENGINEERS/DANCE-POP GURU", "STAR ENGINEERS/EXPENSIVE POP GENIUS", 2000, 4000, 1.0f },
    { "Expensive pop has silk from 10 to 15 kHz over pop soul.",
      "STAR ENGINEERS/EXPENSIVE POP GENIUS", "STAR ENGINEERS/POP-SOUL CHIEF", 10000, 15000, 1.5f },
    { "Alternative rock puts guitars in front from 320 Hz to 4 kHz, hip hop does not.",
      "STAR ENGINEERS/ALT-ROCK HERO", "STAR ENGINEERS/HIP-HOP KING", 320, 4000, 2.0f },
    { "A pop-soul band is warmer from 320 Hz to 1 kHz than hip hop.",
      "STAR ENGINEERS/POP-SOUL CHIEF", "STAR ENGINEERS/HIP-HOP KING", 320, 1000, 1.5f },
    { "An R&B mix has a more open top from 10 to 15 kHz than hip hop.",
      "STAR ENGINEERS/R&B BOSS", "STAR ENGINEERS/HIP-HOP KING", 10000, 15000, 0.5f },
};

inline constexpr Outline outlines[] {
    { "A deep snare speaks from its shell and does not honk at 2 kHz.",
      "DRUMS/SNARE DEEP", 320, 640, 2000, 2000, 3.0f },
    { "Claps live between 1 and 2 kHz.",
      "DRUMS/CLAPS", 1000, 2000, 6000, 10000, 3.0f },
    { "A live kick's beater rises over the box at 1 kHz.",
      "DRUMS/KICK LIVE ROCK", 3000, 4000, 1000, 1000, 1.0f },
    { "Overheads are brighter than they are full.",
      "DRUMS/OVERHEADS", 6000, 10000, 320, 1000, 6.0f },
    { "A distorted guitar keeps its weight in the mids, below its edge.",
      "GUITAR/DISTORTED ELECTRIC", 320, 2000, 3000, 4000, 2.0f },
    { "A guitar at the edge of breaking up has no hole in its mids.",
      "GUITAR/GRITTY ELECTRIC", 640, 1000, 3000, 3000, 2.0f },
    { "A clean guitar is no single peak: 2 kHz lies within 6 dB of 640 Hz.",
      "GUITAR/CLEAN ELECTRIC", 2000, 2000, 640, 640, -6.0f },
    { "A metal guitar is scooped: palm mutes at 320 Hz over 1 kHz.",
      "GUITAR/METAL", 320, 320, 1000, 1000, 2.0f },
    { "A metal guitar's fizz rises again over the scoop.",
      "GUITAR/METAL", 2000, 3000, 1000, 1000, 1.0f },
    { "Brass is strongest in the mids.",
      "OTHER/POP HORN SECTION", 1000, 2000, 320, 320, 2.0f },
    { "Felt keeps a dark piano below 1 kHz.",
      "PIANO/DARK POP", 320, 640, 2000, 3000, 9.0f },
    { "An 808 is all in its lowest overtones.",
      "BASS/808", 320, 640, 2000, 3000, 12.0f },
    { "Motown's mids tower over its top.",
      "OTHER/MOTOWN", 1000, 2000, 10000, 10000, 8.0f },
    { "Trap's hats stand at the height of its presence.",
      "ELECTRONIC/TRAP", 6000, 10000, 3000, 4000, -1.0f },
};
// clang-format on

/** "A deep snare speaks." as aDeepSnareSpeaks. */
inline std::string nameFrom (const std::string& sentence)
{
    std::string name;
    auto beginsWord = false;

    for (const auto letter : sentence)
    {
        const auto character = static_cast<unsigned char> (letter);

        if (std::isalnum (character) != 0)
        {
            name += static_cast<char> (beginsWord ? std::toupper (character) : character);
            beginsWord = false;
        }
        else
            beginsWord = letter != '\'';
    }

    name[0] = static_cast<char> (std::tolower (static_cast<unsigned char> (name[0])));
    return name;
}

inline void PrintTo (const Comparison& claim, std::ostream* stream)
{
    *stream << nameFrom (claim.sentence);
}

inline void PrintTo (const Outline& claim, std::ostream* stream)
{
    *stream << nameFrom (claim.sentence);
}
} // namespace PresetSentences
