// SPDX-License-Identifier: Apache-2.0
// Words: the invented people, streets, vehicles and parts a sample shop is made of.
#pragma once

#include <array>
#include <string_view>

namespace tools::shop {

using std::string_view_literals::operator""sv;

inline constexpr std::array kFirstNames{
    "Aaron"sv,    "Adrienne"sv, "Alma"sv,       "Ambrose"sv,    "André"sv,    "Anneliese"sv,
    "Asher"sv,    "Beatriz"sv,  "Benedict"sv,   "Bridget"sv,    "Calvin"sv,   "Cecily"sv,
    "Chloé"sv,    "Clement"sv,  "Corinne"sv,    "Dashiell"sv,   "Delphine"sv, "Dominic"sv,
    "Edith"sv,    "Elías"sv,    "Eloise"sv,     "Emeric"sv,     "Fergus"sv,   "Françoise"sv,
    "Gideon"sv,   "Greta"sv,    "Gwendolyn"sv,  "Hannah"sv,     "Harvey"sv,   "Helmut"sv,
    "Ignacio"sv,  "Imogen"sv,   "Inès"sv,       "Isidore"sv,    "Ivy"sv,      "Jasper"sv,
    "Joaquín"sv,  "Judith"sv,   "Jürgen"sv,     "Kenji"sv,      "Laurel"sv,   "Leopold"sv,
    "Lucinda"sv,  "Magnus"sv,   "Marguerite"sv, "Mateo"sv,      "Maude"sv,    "Milo"sv,
    "Naomi"sv,    "Nestor"sv,   "Noël"sv,       "Octavia"sv,    "Orson"sv,    "Otis"sv,
    "Paloma"sv,   "Percival"sv, "Philippa"sv,   "Quentin"sv,    "Ramona"sv,   "Renée"sv,
    "Rosalind"sv, "Rufus"sv,    "Selma"sv,      "Siân"sv,       "Silas"sv,    "Søren"sv,
    "Tabitha"sv,  "Theodora"sv, "Thérèse"sv,    "Tobias"sv,     "Ursula"sv,   "Vaughn"sv,
    "Vera"sv,     "Virgil"sv,   "Wallace"sv,    "Wilhelmina"sv, "Xavier"sv,   "Yolanda"sv,
    "Yusuf"sv,    "Zoë"sv};

inline constexpr std::array kLastNames{
    "Abernathy"sv,   "Åkesson"sv,      "Arbogast"sv,     "Ballantyne"sv,    "Barroso"sv,
    "Beaumont"sv,    "Birdsall"sv,     "Bjørnstad"sv,    "Blankenship"sv,   "Bouchard"sv,
    "Brightwell"sv,  "Calloway"sv,     "Castañeda"sv,    "Chisholm"sv,      "Cobblestone"sv,
    "Côté"sv,        "Crabtree"sv,     "D'Angelo"sv,     "Dalrymple"sv,     "De la Cruz"sv,
    "Dunleavy"sv,    "Eberhardt"sv,    "Echevarría"sv,   "Fairbanks"sv,     "Farnsworth"sv,
    "Fitzgibbon"sv,  "Fournier"sv,     "Gallagher"sv,    "Gantry"sv,        "Goldfinch"sv,
    "Grünwald"sv,    "Hathaway"sv,     "Hernández"sv,    "Hollingsworth"sv, "Ibarra"sv,
    "Ingersoll"sv,   "Jablonski"sv,    "Jarnagin"sv,     "Kessler"sv,       "Kowalczyk"sv,
    "L'Heureux"sv,   "Lachance"sv,     "Lindqvist"sv,    "Lockridge"sv,     "MacAllister"sv,
    "Marchetti"sv,   "McGillicuddy"sv, "Merriweather"sv, "Montgomery"sv,    "Müller"sv,
    "Nakagawa"sv,    "Nightingale"sv,  "Núñez"sv,        "O'Brien"sv,       "O'Shaughnessy"sv,
    "Okonkwo"sv,     "Olmstead"sv,     "Papadakis"sv,    "Pemberton"sv,     "Peña"sv,
    "Pettigrew"sv,   "Quackenbush"sv,  "Quiñones"sv,     "Rasmussen"sv,     "Ravenscroft"sv,
    "Rosenthal"sv,   "Saint-Clair"sv,  "Schröder"sv,     "Silverthorne"sv,  "Sørensen"sv,
    "Stonebridge"sv, "Szymanski"sv,    "Thackeray"sv,    "Thistlewood"sv,   "Tremblay"sv,
    "Ullman"sv,      "Underhill"sv,    "Van der Berg"sv, "Vandermeer"sv,    "Villanueva"sv,
    "Wainwright"sv,  "Weatherby"sv,    "Whitcombe"sv,    "Yamamoto"sv,      "Youngblood"sv,
    "Zimmermann"sv};

inline constexpr std::array kStreets{
    "Alder Court"sv,      "Birchwood Drive"sv, "Canal Street"sv,   "Depot Road"sv,
    "Ferry Lane"sv,       "Foundry Street"sv,  "Granary Road"sv,   "Harbor View"sv,
    "Kiln Lane"sv,        "Larkspur Way"sv,    "Mill Pond Road"sv, "Old Quarry Road"sv,
    "Orchard Hill"sv,     "Prospect Avenue"sv, "Quail Run"sv,      "Railroad Avenue"sv,
    "Schoolhouse Road"sv, "Tannery Row"sv,     "Turnpike"sv,       "Weaver's Lane"sv};

// City, state and the first digits of its code.
struct City {
    std::string_view name, state, zip;
};
inline constexpr std::array kCities{
    City{"Alder Falls", "OR", "973"},   City{"Brantley", "OH", "446"},
    City{"Cedar Bluff", "IA", "527"},   City{"Dunmore Junction", "PA", "185"},
    City{"East Haverly", "MA", "018"},  City{"Fort Lansing", "MI", "489"},
    City{"Granite Point", "NH", "032"}, City{"Hollow Creek", "TN", "377"},
    City{"Iron Ridge", "WI", "530"},    City{"Juniper Flats", "NV", "894"},
    City{"Kettle Harbor", "ME", "045"}, City{"Lone Mesa", "NM", "871"}};

inline constexpr std::array kCompanies{
    "Blue Heron Landscaping"sv, "Cascade Courier, Inc."sv, "City of Alder Falls"sv,
    "D & M Plumbing"sv,         "Fairlane Rentals"sv,      "Gibson's Bakery"sv,
    "Halvorsen & Sons"sv,       "Kettle Harbor Schools"sv, "Lakeside Catering"sv,
    "Mesa Electric Co-op"sv,    "Northgate Delivery"sv,    "Pioneer Pest Control"sv,
    "Ridgeline Roofing"sv,      "Tri-County Ambulance"sv,  "Valley Flower Shop"sv};

inline constexpr std::array kInsurers{"Acorn Mutual"sv,       "Beacon Hill Casualty"sv,
                                      "Copper State Auto"sv,  "Driftwood Indemnity"sv,
                                      "Evenstar Insurance"sv, "Farmstead Preferred"sv,
                                      "Gulf Lantern P&C"sv,   "Hearthside Direct"sv,
                                      "Ironwood National"sv,  "Jade Mountain Assurance"sv};

// A make and model as the estimating system describes them.
struct Vehicle {
    std::string_view make, model, body;
};
inline constexpr std::array kVehicles{Vehicle{"Aldine", "Courier", "4D SED"},
                                      Vehicle{"Aldine", "Courier GT", "2D CPE"},
                                      Vehicle{"Aldine", "Regent", "4D SED"},
                                      Vehicle{"Bravura", "Cima 2.0T", "4D SED"},
                                      Vehicle{"Bravura", "Tramonto AWD", "4D UTV"},
                                      Vehicle{"Cascadia", "Ridgeback 4X4", "4D PKP"},
                                      Vehicle{"Cascadia", "Sawtooth LT", "2D PKP"},
                                      Vehicle{"Dorado", "Mesa SLE", "4D UTV"},
                                      Vehicle{"Dorado", "Llano", "VAN"},
                                      Vehicle{"Everett", "Lark", "4D HBK"},
                                      Vehicle{"Everett", "Lark Sport", "2D HBK"},
                                      Vehicle{"Fuyu", "Kaze S", "4D SED"},
                                      Vehicle{"Fuyu", "Kaze Wagon", "4D WGN"},
                                      Vehicle{"Fuyu", "Tetsu XL", "4D UTV"},
                                      Vehicle{"Hallmark", "Senator", "4D SED"},
                                      Vehicle{"Hallmark", "Convoy 2500", "VAN"},
                                      Vehicle{"Kestrel", "Zéphyr", "2D CNV"},
                                      Vehicle{"Kestrel", "Mistral", "4D SED"},
                                      Vehicle{"Nordvik", "N70 AWD", "4D WGN"},
                                      Vehicle{"Nordvik", "N40", "4D SED"},
                                      Vehicle{"Pacer & Webb", "Type 9", "2D CPE"},
                                      Vehicle{"Stellar", "Pulse EX", "4D SED"},
                                      Vehicle{"Stellar", "Pulse Coupé", "2D CPE"},
                                      Vehicle{"Toma", "Vista", "VAN"}};

inline constexpr std::array kColors{"White"sv, "Silver"sv, "Black"sv,    "Red"sv,     "Blue"sv,
                                    "Green"sv, "Gold"sv,   "Gray"sv,     "Maroon"sv,  "Tan"sv,
                                    "Beige"sv, "Bronze"sv, "Charcoal"sv, "Burgundy"sv};

inline constexpr std::array kProgress{"Waiting for parts"sv,
                                      "Disassembly complete"sv,
                                      "In body"sv,
                                      "Frame set-up"sv,
                                      "In paint prep"sv,
                                      "In paint booth"sv,
                                      "Reassembly"sv,
                                      "Waiting on insurance supplement"sv,
                                      "Sublet - alignment"sv,
                                      "Sublet - glass"sv,
                                      "Detail"sv,
                                      "Quality control check"sv,
                                      "Ready for delivery"sv,
                                      "Customer hold"sv};

inline constexpr std::array kSources{"Referral"sv,        "Phone book"sv,     "Drive by"sv,
                                     "Repeat customer"sv, "Insurance list"sv, "Dealer"sv};

struct Department {
    std::string_view name;
    int sequence;
};
inline constexpr std::array kDepartments{Department{"Check In", 10},   Department{"Teardown", 20},
                                         Department{"Body", 30},       Department{"Frame", 40},
                                         Department{"Mechanical", 50}, Department{"Paint Prep", 60},
                                         Department{"Paint", 70},      Department{"Reassembly", 80},
                                         Department{"Detail", 90},     Department{"Delivery", 100}};

// A labor category: its code, its name and how often a job is of it. Units: percent.
struct LaborType {
    std::string_view code, name, field;
    int share;
};
inline constexpr std::array kLaborTypes{LaborType{"BL", "Body Labor", "Body", 42},
                                        LaborType{"RL", "Refinish Labor", "Refinish", 28},
                                        LaborType{"FL", "Frame Labor", "Frame", 8},
                                        LaborType{"ML", "Mechanical Labor", "Mech", 8},
                                        LaborType{"SL", "Structural Labor", "Struct", 5},
                                        LaborType{"GL", "Glass Labor", "Glass", 4},
                                        LaborType{"DL", "Detail Labor", "Other", 5}};

// A part and where it sits on the vehicle.
struct PartName {
    std::string_view name, prefix;
    int price;  // whole currency units
};
inline constexpr std::array kParts{PartName{"Front bumper cover", "FB", 265},
                                   PartName{"Rear bumper cover", "RB", 248},
                                   PartName{"Hood panel", "HD", 385},
                                   PartName{"LT fender", "FL", 172},
                                   PartName{"RT fender", "FR", 172},
                                   PartName{"LT front door shell", "DL", 468},
                                   PartName{"RT front door shell", "DR", 468},
                                   PartName{"LT headlamp assembly", "LL", 214},
                                   PartName{"RT headlamp assembly", "LR", 214},
                                   PartName{"Tail lamp", "TL", 96},
                                   PartName{"Grille", "GR", 118},
                                   PartName{"Radiator support", "RS", 196},
                                   PartName{"Condenser", "AC", 228},
                                   PartName{"Quarter panel", "QP", 512},
                                   PartName{"Deck lid", "DK", 344},
                                   PartName{"Door mirror", "MR", 134},
                                   PartName{"Fender liner", "LN", 48},
                                   PartName{"Wheel, aluminum", "WH", 286},
                                   PartName{"Clip, retainer", "CL", 3},
                                   PartName{"Emblem", "EM", 27}};

inline constexpr std::array kRemarks{
    "Customer states vehicle was struck on the left front while parked."sv,
    "Prior damage to bumper cover not included."sv,
    "Rental arranged by the insurer for the length of the repair."sv,
    "Please call before painting; owner wants to see the color match."sv,
    "Hidden damage found behind the radiator support after teardown."sv,
    "Supplement sent with photos; waiting on the adjuster's answer."sv,
    "Owner's tools in the trunk - keep the keys at the desk."sv,
    "Wheel alignment sublet; invoice to follow."sv,
    "Tow bill paid by the shop, add to the final invoice."sv};

}  // namespace tools::shop
