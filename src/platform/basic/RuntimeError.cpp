#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <iterator>

namespace basic {
namespace {

struct UsualDescription {
    Error error;
    const char* text;
};

// "|" is replaced by the detail; without one, it is dropped with its quotes.
constexpr UsualDescription UsualDescriptions[] = {
    {Error::BadArgument, "Argument ou appel de procédure incorrect"},
    {Error::Overflow, "Dépassement de capacité"},
    {Error::OutOfMemory, "Mémoire insuffisante"},
    {Error::IndexOutOfRange, "L'indice n'appartient pas à la sélection"},
    {Error::TypeMismatch, "Incompatibilité de type"},
    {Error::FileNotFound, "Fichier introuvable"},
    {Error::DiskFull, "Disque plein : '|'"},
    {Error::PermissionDenied, "Permission refusée"},
    {Error::PathAccess, "Erreur dans le chemin d'accès"},
    {Error::PathNotFound, "Chemin d'accès introuvable"},
    {Error::InvalidNull, "Utilisation incorrecte de Null"},
    {Error::InvalidProperty, "Valeur de propriété incorrecte"},
    {Error::NoPendingEdit, "Mise à jour ou annulation de mise à jour sans AddNew ou Edit correspondant."},
    {Error::NoCurrentRecord, "Aucun enregistrement en cours."},
    {Error::DuplicateKey,
     "Modifications non effectuées : elles risquent d'entraîner des doublons dans l'index ou la clé."},
    {Error::DatabaseNotFound, "Fichier '|' introuvable."},
    {Error::ReadOnly, "Mise à jour impossible. Base de données ou objet en lecture seule."},
    {Error::UnreadableWorkgroup,
     "Impossible de démarrer l'application. Le fichier d'informations du groupe de travail est absent ou illisible."},
    {Error::AccountRefused, "Nom de compte ou mot de passe incorrect."},
    {Error::NoTransaction, "Validation ou annulation d'une transaction qui n'a pas été commencée."},
    {Error::DiskOrNetwork, "Erreur disque ou réseau."},
    {Error::FileReplaced, "Le fichier '|' n'est plus celui qui a été ouvert : il a été remplacé, déplacé ou supprimé "
                          "pendant le travail. Rien de plus n'est enregistré ni archivé."},
    {Error::DamagedDatabase, "Impossible d'ouvrir la base de données '|'. Elle est peut-être endommagée."},
    {Error::FileNotOpened,
     "Impossible d'ouvrir le fichier : il est ouvert en mode exclusif par un autre utilisateur ou l'accès est refusé."},
    {Error::UnknownColumn, "Trop peu de paramètres. Champ inconnu : '|'."},
    {Error::NotAnAction, "Impossible d'exécuter une requête sélection."},
    {Error::SyntaxError, "Erreur de syntaxe dans l'expression '|'."},
    {Error::UnknownTable,
     "Le moteur de base de données ne peut pas trouver la table ou la requête source '|'. Assurez-vous qu'elle "
     "existe et que son nom est correctement orthographié."},
    {Error::UnknownFunction, "Fonction '|' non définie dans l'expression."},
    {Error::FieldTooSmall, "Le champ est trop petit pour la quantité de données à ajouter."},
    {Error::FieldNotUpdatable, "Mise à jour impossible de ce champ."},
    {Error::RecordDeleted, "L'enregistrement est supprimé."},
    {Error::Locked, "Lecture ou écriture impossible ; verrouillage en cours par un autre utilisateur."},
    {Error::FieldExists, "Impossible de définir un champ plus d'une fois."},
    {Error::DatabaseExists, "La base de données existe déjà."},
    {Error::InvalidOperation, "Opération non valide."},
    {Error::NestedTransaction, "Opération non autorisée dans les transactions."},
    {Error::UnknownField, "Élément non trouvé dans cette collection."},
    {Error::NullNotAllowed, "Le champ doit contenir une valeur : il ne peut pas être Null."},
    {Error::ValidationFailed, "Une règle de validation interdit cette valeur."},
    {Error::UnrecognizedFormat, "Format de base de données '|' non reconnu."},
    {Error::ObjectClosed, "Objet incorrect ou n'étant plus défini."},
    {Error::ConversionFailed, "Erreur de conversion du type de données."},
};

QString WithDetail(QString description, const QString& detail)
{
    if (!detail.isEmpty())
        return description.replace("|", detail);
    return description.replace(" : '|'", "").replace(" '|'", "");
}

QString Usual(Error error, const QString& detail)
{
    const auto* const usual = std::ranges::find(UsualDescriptions, error, &UsualDescription::error);
    return usual == std::end(UsualDescriptions) ? QStringLiteral("Erreur définie par l'application ou par l'objet")
                                                : WithDetail(QString::fromUtf8(usual->text), detail);
}

} // namespace

RuntimeError::RuntimeError(Error error, const QString& detail)
    : RuntimeError(error, OwnDescription{Usual(error, detail)})
{
}

RuntimeError::RuntimeError(Error error, OwnDescription own)
    : code(error), description(own.text), utf8(own.text.toUtf8())
{
}

RuntimeError RuntimeError::Described(Error error, const QString& description)
{
    return {error, OwnDescription{description}};
}

} // namespace basic
