#include "practice/demo/DemoWords.h"

namespace practice {
namespace {

constexpr const char* FamilyNameTable[] = {
    "Abdelkader", "Abdi",        "Achour",     "Aïssaoui", "Aït Saïd",  "Allaoui",   "Amrani",        "Arezki",
    "Azzouz",     "Bachir",      "Belaïd",     "Belhadj",  "Belkacem",  "Benali",    "Benamar",       "Benaïssa",
    "Benchikh",   "Bendjelloul", "Benmansour", "Bensalem", "Benyahia",  "Bernard",   "Bertrand",      "Bouaziz",
    "Boudjemaa",  "Boukhalfa",   "Boumaza",    "Bouzid",   "Brahimi",   "Chabane",   "Chaouche",      "Cherif",
    "Chevalier",  "D'Angelo",    "Dahmani",    "Daoud",    "De L'Isle", "Djaballah", "Djebbar",       "Dubois",
    "Ferhat",     "Fournier",    "Ghezali",    "Girard",   "Guérin",    "Guessoum",  "Haddad",        "Hadj Ali",
    "Hamdi",      "Hamidou",     "Henni",      "Ighil",    "Kaci",      "Kadri",     "Kebir",         "Khelifi",
    "L'Herbier",  "Laïdi",       "Lakhdar",    "Lefèvre",  "Légaré",    "Loucif",    "Mahiou",        "Mansouri",
    "Martin",     "Mebarki",     "Medjdoub",   "Meziane",  "Mokrani",   "Moreau",    "Mouloud",       "N'Guessan",
    "Nait Saada", "Nasri",       "O'Brien",    "Ouali",    "Ould Ali",  "Ouazene",   "Père-Lahaille", "Rabhi",
    "Rahmani",    "Renaud",      "Saadi",      "Sahli",    "Saïdi",     "Salhi",     "Sebaa",         "Seghir",
    "Slimani",    "Tabet",       "Taleb",      "Tebbal",   "Tounsi",    "Touati",    "Yacine",        "Yahiaoui",
    "Zaïdi",      "Zemmouri",    "Zerrouki",   "Ziani",    "Zitouni",
};

constexpr const char* MaleNameTable[] = {
    "Abdelaziz", "Abderrahmane", "Adel",   "Ahmed", "Ali",    "Amine",    "André",  "Anis",   "Aziz",
    "Bilal",     "Brahim",       "Djamel", "Farid", "Fayçal", "François", "Hakim",  "Hamza",  "Hocine",
    "Ismaël",    "Jean-Pierre",  "Kamel",  "Karim", "Khaled", "Lotfi",    "Lyès",   "Mehdi",  "Mohamed",
    "Mourad",    "Nabil",        "Nadir",  "Omar",  "Rachid", "Rafik",    "Réda",   "René",   "Salah",
    "Samir",     "Sofiane",      "Tahar",  "Théo",  "Walid",  "Yacine",   "Younès", "Youcef", "Zinedine",
};

constexpr const char* FemaleNameTable[] = {
    "Aïcha",   "Amel",   "Amina",  "Anissa", "Assia",  "Baya",     "Célia",  "Chahinez", "Chloé",   "Dalila",
    "Djamila", "Élodie", "Ève",    "Farida", "Fatiha", "Fatima",   "Fella",  "Hakima",   "Hanane",  "Hayet",
    "Houria",  "Imane",  "Inès",   "Kahina", "Karima", "Khadidja", "Lamia",  "Leïla",    "Lila",    "Lydia",
    "Malika",  "Maryse", "Meriem", "Nadia",  "Naïma",  "Nassima",  "Nora",   "Ouardia",  "Rachida", "Rym",
    "Sabrina", "Salima", "Samira", "Sarah",  "Souad",  "Thiziri",  "Yamina", "Yasmine",  "Zahra",   "Zoé",
};

constexpr const char* TownTable[] = {
    "Alger",
    "Oran",
    "Constantine",
    "Annaba",
    "Blida",
    "Sétif",
    "Batna",
    "Tlemcen",
    "Béjaïa",
    "Tizi Ouzou",
    "Médéa",
    "Mostaganem",
    "Bordj Bou Arreridj",
    "Ghardaïa",
    "Skikda",
    "Chlef",
    "El Harrach",
    "Boufarik",
    "Cherchell",
    "Tipaza",
    "Aïn Témouchent",
    "M'Sila",
    "Sidi M'Hamed",
    "Bab El Oued",
    "Rouïba",
    "Hussein Dey",
    "Bouira",
    "Boumerdès",
    "Guelma",
    "Jijel",
};

constexpr const char* DiagnosisTable[] = {
    "Hypertension artérielle",
    "Diabète de type 2",
    "Asthme",
    "Lombalgie chronique",
    "Insuffisance cardiaque",
    "Trouble du rythme",
    "Bronchite aiguë",
    "Angine",
    "Gastrite",
    "Anémie ferriprive",
    "Migraine",
    "Dyslipidémie",
    "Arthrose du genou",
    "Suivi de grossesse",
    "Thyroïdite",
    "Infection urinaire",
    "Syndrome grippal",
    "Colopathie fonctionnelle",
    "Rhinite allergique",
    "Entorse de la cheville",
    "Valvulopathie mitrale",
    "Contrôle après chirurgie",
    "Bilan de santé",
    "Insuffisance veineuse",
    "Sciatique",
    "Eczéma",
    "Otite moyenne",
    "Douleur thoracique",
};

constexpr ServiceWords ServiceTable[] = {
    {"Consultation", 0, 300},   {"ECG", 9, 110},         {"Échographie", 19, 120},     {"Radiologie", 16, 90},
    {"Écho-Doppler", 26, 60},   {"Holter ECG", 31, 30},  {"Épreuve d'effort", 29, 25}, {"Spirométrie", 13, 40},
    {"Pansement", 4, 70},       {"Injection", 2, 80},    {"Petite chirurgie", 22, 25}, {"Visite à domicile", 11, 30},
    {"Fibroscopie", 24, 20},    {"Audiométrie", 12, 20}, {"Rééducation", 8, 35},       {"Vaccination", 3, 45},
    {"Électrothérapie", 7, 15}, {"Prélèvement", 5, 50},  {"Plâtre", 18, 15},           {"Certificat", 1, 25},
};

constexpr ExpenseWords ExpenseTable[] = {
    {"Fournitures de bureau", 800, 6500},
    {"Produits d'entretien", 600, 3500},
    {"Facture d'électricité et de gaz", 4500, 14000},
    {"Facture d'eau", 1200, 4800},
    {"Recharge téléphone", 500, 2000},
    {"Abonnement Internet", 2500, 4000},
    {"Compresses et pansements", 1500, 9000},
    {"Gel pour échographie", 2000, 6000},
    {"Papier ECG", 1800, 5200},
    {"Gants d'examen", 1200, 4500},
    {"Réparation de l'imprimante", 3000, 12000},
    {"Cartouches d'encre", 3500, 9500},
    {"Frais de transport", 300, 1800},
    {"Café et eau minérale", 400, 1600},
    {"Blanchisserie", 1000, 3200},
    {"Désinfectant", 900, 4200},
    {"Avance au personnel", 5000, 15000},
    {"Timbres et courrier", 200, 1200},
    {"Entretien de l'ascenseur", 2000, 4000},
    {"Serrurier", 2500, 7000},
};

} // namespace

Words FamilyNames()
{
    return FamilyNameTable;
}
Words FirstNamesOfMen()
{
    return MaleNameTable;
}
Words FirstNamesOfWomen()
{
    return FemaleNameTable;
}
Words Towns()
{
    return TownTable;
}
Words Diagnoses()
{
    return DiagnosisTable;
}
std::span<const ServiceWords> Services()
{
    return ServiceTable;
}
std::span<const ExpenseWords> Expenses()
{
    return ExpenseTable;
}

} // namespace practice
