#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <iterator>

namespace basic {
namespace {

struct UsualDescription {
    int number;
    const char* text;
};

// "|" is the place of the detail; where none is given it and its quotes are dropped with the words around left
// readable.
constexpr UsualDescription usualDescriptions[] = {
    {5, "Argument ou appel de procédure incorrect"},
    {6, "Dépassement de capacité"},
    {7, "Mémoire insuffisante"},
    {9, "L'indice n'appartient pas à la sélection"},
    {13, "Incompatibilité de type"},
    {53, "Fichier introuvable"},
    {61, "Disque plein"},
    {68, "Périphérique non disponible"},
    {70, "Permission refusée"},
    {75, "Erreur dans le chemin d'accès"},
    {76, "Chemin d'accès introuvable"},
    {94, "Utilisation incorrecte de Null"},
    {380, "Valeur de propriété incorrecte"},
    {3020, "Mise à jour ou annulation de mise à jour sans AddNew ou Edit correspondant."},
    {3021, "Aucun enregistrement en cours."},
    {3022, "Modifications non effectuées : elles risquent d'entraîner des doublons dans l'index ou la clé."},
    {3024, "Fichier '|' introuvable."},
    {3027, "Mise à jour impossible. Base de données ou objet en lecture seule."},
    {3028,
     "Impossible de démarrer l'application. Le fichier d'informations du groupe de travail est absent ou illisible."},
    {3029, "Nom de compte ou mot de passe incorrect."},
    {3034, "Validation ou annulation d'une transaction qui n'a pas été commencée."},
    {3043, "Erreur disque ou réseau."},
    {3049, "Impossible d'ouvrir la base de données '|'. Elle est peut-être endommagée."},
    {3051,
     "Impossible d'ouvrir le fichier : il est ouvert en mode exclusif par un autre utilisateur ou l'accès est refusé."},
    {3061, "Trop peu de paramètres. Champ inconnu : '|'."},
    {3065, "Impossible d'exécuter une requête sélection."},
    {3070, "Le moteur de base de données ne reconnaît pas '|' en tant que nom de champ ou expression correcte."},
    {3075, "Erreur de syntaxe dans l'expression '|'."},
    {3078, "Le moteur de base de données ne peut pas trouver la table ou la requête source '|'. Assurez-vous qu'elle "
           "existe et que son nom est correctement orthographié."},
    {3085, "Fonction '|' non définie dans l'expression."},
    {3163, "Le champ est trop petit pour la quantité de données à ajouter."},
    {3164, "Mise à jour impossible de ce champ."},
    {3167, "L'enregistrement est supprimé."},
    {3187, "Lecture ou écriture impossible ; verrouillage en cours par un autre utilisateur."},
    {3191, "Impossible de définir un champ plus d'une fois."},
    {3204, "La base de données existe déjà."},
    {3219, "Opération non valide."},
    {3246, "Opération non autorisée dans les transactions."},
    {3265, "Élément non trouvé dans cette collection."},
    {3314, "Le champ doit contenir une valeur : il ne peut pas être Null."},
    {3317, "Une règle de validation interdit cette valeur."},
    {3343, "Format de base de données '|' non reconnu."},
    {3420, "Objet incorrect ou n'étant plus défini."},
    {3421, "Erreur de conversion du type de données."},
};

QString WithDetail(QString description, const QString& detail)
{
    if (!detail.isEmpty())
        return description.replace("|", detail);
    return description.replace(" : '|'", "").replace(" '|'", "");
}

} // namespace

RuntimeError Error(int number, const QString& detail)
{
    const auto* const usual = std::ranges::find(usualDescriptions, number, &UsualDescription::number);
    if (usual == std::end(usualDescriptions))
        return {number, "Erreur définie par l'application ou par l'objet"};
    return {number, WithDetail(QString::fromUtf8(usual->text), detail)};
}

} // namespace basic
