<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>À propos de %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Runs on Corvane %1 and Qt %2</source>
        <translation>Fonctionne avec Corvane %1 et Qt %2</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Licence : %1</translation>
    </message>
    <message>
        <source>Uses these libraries under their licences:</source>
        <translation>Utilise ces bibliothèques sous leurs licences :</translation>
    </message>
</context>
<context>
    <name>AppearancePage</name>
    <message>
        <source>Follow the system</source>
        <translation>Suivre le système</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message>
        <source>%1 pixels</source>
        <translation>%1 pixels</translation>
    </message>
    <message>
        <source>&amp;Theme:</source>
        <translation>&amp;Thème&#xa0;:</translation>
    </message>
    <message>
        <source>Toolbar &amp;icon size:</source>
        <translation>Taille des &amp;icônes des barres d’outils :</translation>
    </message>
    <message>
        <source>&amp;Windows:</source>
        <translation>&amp;Fenêtres&#xa0;:</translation>
    </message>
    <message>
        <source>In tabs</source>
        <translation>En onglets</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>Libres</translation>
    </message>
    <message>
        <source>Show the start page</source>
        <translation>Afficher la page d’accueil</translation>
    </message>
    <message>
        <source>Show nothing</source>
        <translation>Ne rien afficher</translation>
    </message>
    <message>
        <source>While &amp;no window is open:</source>
        <translation>Sans fenêtre &amp;ouverte :</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Langue&#xa0;:</translation>
    </message>
    <message>
        <source>Another language is shown from the next start on.</source>
        <translation>Une autre langue s’affiche à partir du prochain démarrage.</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>The help topic %1 can&apos;t be opened. Its file is expected at %2.</source>
        <translation>La rubrique d’aide %1 ne peut pas être ouverte. Son fichier est attendu dans %2.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Enregistrer le rapport</translation>
    </message>
    <message>
        <source>%1 report.txt</source>
        <translation>Rapport %1.txt</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Imprimer</translation>
    </message>
    <message>
        <source>The window has missing or invalid entries</source>
        <translation>La fenêtre contient des saisies manquantes ou non valides</translation>
    </message>
    <message>
        <source>A part of the application failed; the rest goes on.</source>
        <translation>Une partie de l’application a échoué&#xa0;; le reste continue.</translation>
    </message>
    <message>
        <source>This application has no manual. Its file is expected at %1.</source>
        <translation>Cette application n’a pas de manuel. Son fichier est attendu à l’emplacement %1.</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manuel</translation>
    </message>
    <message>
        <source>No program on this system opens %1.</source>
        <translation>Aucun programme de ce système n’ouvre %1.</translation>
    </message>
</context>
<context>
    <name>BarActions</name>
    <message>
        <source>for one item</source>
        <translation>pour un seul élément</translation>
    </message>
</context>
<context>
    <name>BarRenderer</name>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>More of %1</source>
        <translation>Suite de %1</translation>
    </message>
    <message>
        <source>%1, and then…</source>
        <translation>%1, puis…</translation>
    </message>
    <message>
        <source>No command has the shortcut %1.</source>
        <translation>Aucune commande n’a le raccourci %1.</translation>
    </message>
</context>
<context>
    <name>Blame</name>
    <message>
        <source>Crash Recovery</source>
        <translation>Récupération après une panne</translation>
    </message>
    <message>
        <source>The application stopped responding while “%1” was running.</source>
        <translation>L’application ne répondait plus pendant l’exécution de « %1 ».</translation>
    </message>
    <message>
        <source>The application quit unexpectedly while “%1” was running.</source>
        <translation>L’application s’est arrêtée de façon inattendue pendant l’exécution de « %1 ».</translation>
    </message>
    <message>
        <source>You can start without “%1” this time; its commands and windows are unavailable then. Safe mode starts without all plug-ins and without your customizations.</source>
        <translation>Vous pouvez démarrer sans « %1 » cette fois-ci ; ses commandes et ses fenêtres seront alors indisponibles. Le mode sans échec démarre sans aucun greffon et sans vos personnalisations.</translation>
    </message>
    <message>
        <source>Start &amp;Without It</source>
        <translation>Démarrer sans &amp;lui</translation>
    </message>
    <message>
        <source>&amp;Start Normally</source>
        <translation>Démarrer &amp;normalement</translation>
    </message>
    <message>
        <source>Start in Safe &amp;Mode</source>
        <translation>Démarrer en &amp;mode sans échec</translation>
    </message>
</context>
<context>
    <name>CallList</name>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Provider</source>
        <translation>Fournisseur</translation>
    </message>
    <message>
        <source>Procedure</source>
        <translation>Procédure</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Étiquette</translation>
    </message>
    <message>
        <source>Handled by</source>
        <translation>Traité par</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Appels</translation>
    </message>
    <message>
        <source>no object</source>
        <translation>aucun objet</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucune</translation>
    </message>
    <message>
        <source>stub</source>
        <translation>substitut</translation>
    </message>
    <message>
        <source>plug-in</source>
        <translation>greffon</translation>
    </message>
</context>
<context>
    <name>ClearButton</name>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
</context>
<context>
    <name>CommandRow</name>
    <message>
        <source>&amp;Help</source>
        <translation>Ai&amp;de</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Précédent</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Suivant</translation>
    </message>
    <message>
        <source>&amp;Finish</source>
        <translation>&amp;Terminer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>E&amp;nregistrer sous…</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Appliquer</translation>
    </message>
    <message>
        <source>S&amp;kip</source>
        <translation>&amp;Ignorer</translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>%1 (%2 in the explorer)</source>
        <translation>%1 (%2 dans l’explorateur)</translation>
    </message>
    <message>
        <source>page %1 of the window %2</source>
        <translation>page %1 de la fenêtre %2</translation>
    </message>
    <message>
        <source>no active item or window provides it</source>
        <translation>aucun élément ni fenêtre actif ne la propose</translation>
    </message>
    <message>
        <source> or </source>
        <translation> ou </translation>
    </message>
    <message>
        <source>%1 isn&apos;t active</source>
        <translation>%1 n’est pas actif</translation>
    </message>
    <message>
        <source>hidden by %1</source>
        <translation>masquée par %1</translation>
    </message>
    <message>
        <source>disabled by %1</source>
        <translation>désactivée par %1</translation>
    </message>
    <message>
        <source>%1 has no procedure for it</source>
        <translation>%1 n’a pas de procédure pour cette commande</translation>
    </message>
    <message>
        <source>Toolbar %1</source>
        <translation>Barre d’outils %1</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorateur</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>«&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>an %1</source>
        <comment>kind of item in the explorer</comment>
        <translation>un élément «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>a %1</source>
        <comment>kind of item in the explorer</comment>
        <translation>un élément «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Choose %1 in the explorer first</source>
        <translation>Choisissez d’abord %1 dans l’explorateur</translation>
    </message>
    <message>
        <source>Bring the window %1 to the front first</source>
        <translation>Mettez d’abord la fenêtre %1 au premier plan</translation>
    </message>
    <message>
        <source>the window itself</source>
        <translation>la fenêtre elle-même</translation>
    </message>
</context>
<context>
    <name>CustomizeDialog</name>
    <message>
        <source>Customize Menus and Toolbars</source>
        <translation>Personnaliser les menus et les barres d’outils</translation>
    </message>
    <message>
        <source>Menus and toolbars</source>
        <translation>Menus et barres d’outils</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Entrées</translation>
    </message>
    <message>
        <source>Unchecked entries are hidden. Toolbar buttons can be moved and added.</source>
        <translation type="vanished">Les entrées non cochées sont masquées. Les boutons des barres d’outils peuvent être déplacés et ajoutés.</translation>
    </message>
    <message>
        <source>&amp;Forget These</source>
        <translation>&amp;Oublier celles-ci</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>&amp;Monter</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>&amp;Descendre</translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation>&amp;Ajouter…</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>R&amp;eset This</source>
        <translation>&amp;Réinitialiser</translation>
    </message>
    <message>
        <source>Reset A&amp;ll…</source>
        <translation>&amp;Tout réinitialiser…</translation>
    </message>
    <message>
        <source>Reset all menus and toolbars to the application&apos;s defaults?</source>
        <translation>Rétablir tous les menus et barres d’outils par défaut de l’application ?</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Barres d’outils</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menus</translation>
    </message>
    <message>
        <source>Context menus</source>
        <translation>Menus contextuels</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Séparateur</translation>
    </message>
    <message>
        <source>%1 (added)</source>
        <translation>%1 (ajouté)</translation>
    </message>
    <message>
        <source>Kept for entries that no longer exist:
%1</source>
        <translation>Conservé pour des entrées qui n’existent plus :
%1</translation>
    </message>
    <message>
        <source>Unchecked entries are hidden. Drag entries to move them, or use the buttons.</source>
        <translation>Les entrées non cochées sont masquées. Faites glisser les entrées pour les déplacer, ou utilisez les boutons.</translation>
    </message>
</context>
<context>
    <name>DefinitionPlaces</name>
    <message>
        <source>%1, line %2</source>
        <translation>%1, ligne %2</translation>
    </message>
</context>
<context>
    <name>DesktopJobs</name>
    <message>
        <source>Jobs</source>
        <translation>Tâches</translation>
    </message>
</context>
<context>
    <name>DocumentBar</name>
    <message>
        <source>Open windows</source>
        <translation>Fenêtres ouvertes</translation>
    </message>
    <message>
        <source>%1, pinned</source>
        <translation>%1, épinglé</translation>
    </message>
</context>
<context>
    <name>Documents</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>&amp;Dock</source>
        <translation>A&amp;ncrer</translation>
    </message>
    <message>
        <source>Close &amp;Others</source>
        <translation>Fermer les &amp;autres</translation>
    </message>
    <message>
        <source>Close to the &amp;Right</source>
        <translation>Fermer à d&amp;roite</translation>
    </message>
    <message>
        <source>&amp;Pin</source>
        <translation>É&amp;pingler</translation>
    </message>
    <message>
        <source>&amp;Split Right</source>
        <translation>&amp;Diviser à droite</translation>
    </message>
    <message>
        <source>Split &amp;Below</source>
        <translation>Diviser en dess&amp;ous</translation>
    </message>
    <message>
        <source>Move to &amp;Next Group</source>
        <translation>Déplacer vers le &amp;groupe suivant</translation>
    </message>
    <message>
        <source>Move to Own &amp;Window</source>
        <translation>Déplacer dans sa propre f&amp;enêtre</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>Enregis&amp;trer</translation>
    </message>
</context>
<context>
    <name>EntryButton</name>
    <message>
        <source>%1, done</source>
        <translation>%1, fait</translation>
    </message>
</context>
<context>
    <name>Explorer</name>
    <message>
        <source>Explorer</source>
        <translation>Explorateur</translation>
    </message>
</context>
<context>
    <name>ExplorerPage</name>
    <message>
        <source>Filter</source>
        <translation>Filtrer</translation>
    </message>
    <message>
        <source>Filter for %1</source>
        <translation>Filtre pour %1</translation>
    </message>
    <message>
        <source>Shows the items that contain this text (Ctrl+F)</source>
        <translation>Affiche les éléments qui contiennent ce texte (Ctrl+F)</translation>
    </message>
    <message>
        <source>No matching items</source>
        <translation>Aucun élément correspondant</translation>
    </message>
    <message>
        <source>Nothing here yet. Items that you create or open appear in this list.</source>
        <translation>Rien ici pour l’instant. Les éléments que vous créez ou ouvrez apparaissent dans cette liste.</translation>
    </message>
</context>
<context>
    <name>ExplorerPanel</name>
    <message>
        <source>The explorer is empty. Items appear here when the application provides them.</source>
        <translation>L’explorateur est vide. Des éléments apparaissent ici dès que l’application en fournit.</translation>
    </message>
    <message>
        <source>Explorer tabs</source>
        <translation>Onglets de l’explorateur</translation>
    </message>
</context>
<context>
    <name>ExplorerTree</name>
    <message numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n élément</numerusform>
            <numerusform>%n éléments</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing here takes other items.</source>
        <translation>Rien ici n’accepte d’autres éléments.</translation>
    </message>
    <message>
        <source>Return moves %1 here, Ctrl+Return copies. Esc cancels.</source>
        <translation>Entrée déplace %1 ici, Ctrl+Entrée copie. Échap annule.</translation>
    </message>
    <message>
        <source>Go to the target of %1 with the arrow keys. Esc cancels.</source>
        <translation>Allez à la cible de %1 avec les flèches. Échap annule.</translation>
    </message>
</context>
<context>
    <name>FailureDialog</name>
    <message>
        <source>An Error Occurred</source>
        <translation>Une erreur est survenue</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>&amp;Details</source>
        <translation>&amp;Détails</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Open &amp;Log</source>
        <translation>Ouvrir le &amp;journal</translation>
    </message>
    <message>
        <source>All &amp;problems in this file:</source>
        <translation>Tous les &amp;problèmes de ce fichier :</translation>
    </message>
</context>
<context>
    <name>FailurePresenter</name>
    <message>
        <source>Correct the file at that place and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Corrigez le fichier à cet endroit et redémarrez l’application. D’ici là, cette partie est indisponible.</translation>
    </message>
    <message>
        <source>Correct the name at that place and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Corrigez le nom à cet endroit et redémarrez l’application. D’ici là, cette partie est indisponible.</translation>
    </message>
    <message>
        <source>Check that the plug-in is in the folder “plugins” and that its file name matches the ProgID. Until then, this part of the application is unavailable.</source>
        <translation>Vérifiez que le greffon se trouve dans le dossier « plugins » et que son nom de fichier correspond au ProgID. D’ici là, cette partie de l’application est indisponible.</translation>
    </message>
    <message>
        <source>Correct the definition and restart the application. Until then, this part of it is unavailable.</source>
        <translation>Corrigez la définition et redémarrez l’application. D’ici là, cette partie est indisponible.</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, ligne %2</translation>
    </message>
    <message>
        <source>The command couldn&apos;t be completed</source>
        <translation>La commande n’a pas pu être menée à terme</translation>
    </message>
</context>
<context>
    <name>FailureView</name>
    <message>
        <source>This page can&apos;t be shown</source>
        <translation>Cette page ne peut pas être affichée</translation>
    </message>
    <message>
        <source>Error %1 from %2</source>
        <translation>Erreur %1 de %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Copies the error description to the clipboard</source>
        <translation>Copie la description de l’erreur dans le presse-papiers</translation>
    </message>
</context>
<context>
    <name>FieldEditor</name>
    <message>
        <source>Restore the default</source>
        <translation>Rétablir la valeur par défaut</translation>
    </message>
    <message>
        <source>Restore the default: %1</source>
        <translation>Rétablir la valeur par défaut : %1</translation>
    </message>
    <message>
        <source>Required</source>
        <translation>Obligatoire</translation>
    </message>
</context>
<context>
    <name>Files</name>
    <message>
        <source>“%1” is there already.</source>
        <translation>«&#xa0;%1&#xa0;» existe déjà.</translation>
    </message>
    <message>
        <source>Replacing it in the folder “%1” overwrites what it holds.</source>
        <translation>Si vous remplacez le fichier dans le dossier «&#xa0;%1&#xa0;», son contenu est écrasé.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Remplacer</translation>
    </message>
    <message>
        <source>Choose &amp;Another Name</source>
        <translation>Choisir un &amp;autre nom</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>Tous les fichiers</translation>
    </message>
</context>
<context>
    <name>FormPrinting</name>
    <message>
        <source>Yes</source>
        <translation>Oui</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Non</translation>
    </message>
</context>
<context>
    <name>FormProblem</name>
    <message>
        <source>Please enter a value.</source>
        <translation>Veuillez saisir une valeur.</translation>
    </message>
    <message>
        <source>Please enter a whole number.</source>
        <translation>Veuillez saisir un nombre entier.</translation>
    </message>
    <message>
        <source>Please enter a number.</source>
        <translation>Veuillez saisir un nombre.</translation>
    </message>
    <message>
        <source>Please enter a value from %1 to %2.</source>
        <translation>Veuillez saisir une valeur de %1 à %2.</translation>
    </message>
    <message>
        <source>Please enter at least %1.</source>
        <translation>Veuillez saisir au moins %1.</translation>
    </message>
    <message>
        <source>Please enter at most %1.</source>
        <translation>Veuillez saisir au plus %1.</translation>
    </message>
    <message>
        <source>Please enter at most %1 decimal places.</source>
        <translation>Veuillez saisir au plus %1 décimales.</translation>
    </message>
    <message>
        <source>Please enter at most %1 characters.</source>
        <translation>Veuillez saisir au plus %1 caractères.</translation>
    </message>
    <message>
        <source>Please enter: %1.</source>
        <translation>Veuillez saisir : %1.</translation>
    </message>
    <message>
        <source>Please choose one of the values.</source>
        <translation>Veuillez choisir une des valeurs.</translation>
    </message>
    <message>
        <source>Please enter true or false.</source>
        <translation>Veuillez saisir true ou false.</translation>
    </message>
    <message>
        <source>Please enter a date, such as 2026-11-25.</source>
        <translation>Veuillez saisir une date, par exemple 2026-11-25.</translation>
    </message>
    <message>
        <source>Please enter a time, such as 18:30.</source>
        <translation>Veuillez saisir une heure, par exemple 18:30.</translation>
    </message>
    <message>
        <source>Please enter a date and a time, such as 2026-11-25 18:30.</source>
        <translation>Veuillez saisir une date et une heure, par exemple 2026-11-25 18:30.</translation>
    </message>
    <message>
        <source>Please enter a color, such as #1f77b4.</source>
        <translation>Veuillez saisir une couleur, par exemple #1f77b4.</translation>
    </message>
    <message>
        <source>This value can&apos;t be used here; %1 is expected.</source>
        <translation>Cette valeur ne convient pas ici ; %1 est attendu.</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true ou false</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>un nombre entier</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>un nombre</translation>
    </message>
    <message>
        <source>another value</source>
        <translation>une autre valeur</translation>
    </message>
</context>
<context>
    <name>FormWidget</name>
    <message>
        <source>Restore Defaults</source>
        <translation>Valeurs par défaut</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>yes</source>
        <translation>oui</translation>
    </message>
    <message>
        <source>no</source>
        <translation>non</translation>
    </message>
    <message>
        <source>Added by</source>
        <translation>Ajouté par</translation>
    </message>
    <message>
        <source>code of %1</source>
        <translation>le code de %1</translation>
    </message>
    <message>
        <source>%1, for %2</source>
        <translation>%1, pour %2</translation>
    </message>
    <message>
        <source>Position (position key)</source>
        <translation>Position (clé de position)</translation>
    </message>
    <message>
        <source>you</source>
        <translation>vous</translation>
    </message>
    <message>
        <source>code of %1, at run time</source>
        <translation>le code de %1, à l’exécution</translation>
    </message>
    <message>
        <source>the library; not defined in a file</source>
        <translation>la bibliothèque ; défini dans aucun fichier</translation>
    </message>
    <message>
        <source>Also defined by</source>
        <translation>Défini aussi par</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Visible</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>Procedure</source>
        <translation>Procédure</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucune</translation>
    </message>
    <message>
        <source>Provider</source>
        <translation>Fournisseur</translation>
    </message>
    <message>
        <source>%1, an object of the class %2</source>
        <translation>%1, un objet de la classe %2</translation>
    </message>
    <message>
        <source>none at present</source>
        <translation>aucun actuellement</translation>
    </message>
    <message>
        <source>as set by %1</source>
        <translation>ainsi défini par %1</translation>
    </message>
    <message>
        <source>not hidden</source>
        <translation>non masqué</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>Activé</translation>
    </message>
    <message>
        <source>Checked</source>
        <translation>Coché</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Entrée</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Clé</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci</translation>
    </message>
    <message>
        <source>%1, set by you instead of %2</source>
        <translation>%1, défini par vous à la place de %2</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Masqué</translation>
    </message>
    <message>
        <source>by you, in this menu or toolbar</source>
        <translation>par vous, dans ce menu ou cette barre d’outils</translation>
    </message>
    <message>
        <source>Opens</source>
        <translation>Ouvre</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Libellé</translation>
    </message>
    <message>
        <source>Entries</source>
        <translation>Entrées</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Modifié</translation>
    </message>
    <message>
        <source>by you</source>
        <translation>par vous</translation>
    </message>
    <message>
        <source>Explorer item</source>
        <translation>Élément de l’explorateur</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Propriétaire</translation>
    </message>
    <message>
        <source>an object of the class %1</source>
        <translation>un objet de la classe %1</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Defined in</source>
        <translation>Défini dans</translation>
    </message>
    <message>
        <source>ProgID</source>
        <translation>ProgID</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>Objet</translation>
    </message>
    <message>
        <source>of the class %1</source>
        <translation>de la classe %1</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Actif</translation>
    </message>
    <message>
        <source>Starts the application</source>
        <translation>Démarre l’application</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>Explorer items</source>
        <translation>Éléments de l’explorateur</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenêtre</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Modal</source>
        <translation>Modale</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Translated from</source>
        <translation>Traduit de</translation>
    </message>
    <message>
        <source>Process</source>
        <translation>Processus</translation>
    </message>
    <message>
        <source>%1, with %2 MiB</source>
        <translation>%1, avec %2 Mio</translation>
    </message>
    <message>
        <source>not started yet</source>
        <translation>pas encore démarré</translation>
    </message>
    <message>
        <source>Described in</source>
        <translation>Décrit dans</translation>
    </message>
    <message>
        <source>Starts</source>
        <translation>Démarrages</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Appels</translation>
    </message>
    <message>
        <source>%1, %2 ms on average</source>
        <translation>%1, %2 ms en moyenne</translation>
    </message>
    <message>
        <source>Longest call</source>
        <translation>Appel le plus long</translation>
    </message>
    <message>
        <source>%1 ms: %2</source>
        <translation>%1 ms : %2</translation>
    </message>
</context>
<context>
    <name>InspectorDialog</name>
    <message>
        <source>hidden</source>
        <translation>masqué</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>désactivé</translation>
    </message>
    <message>
        <source>checked</source>
        <translation>coché</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspecteur</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>Objet</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Objects of the application</source>
        <translation>Objets de l’application</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>&amp;Objects</source>
        <translation>&amp;Objets</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Journal</translation>
    </message>
    <message>
        <source>Ctrl+Alt+click an entry of a menu, a toolbar or the explorer to show it here.</source>
        <translation>Ctrl+Alt+clic sur une entrée d’un menu, d’une barre d’outils ou de l’explorateur l’affiche ici.</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>Services</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menus</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Barres d’outils</translation>
    </message>
    <message>
        <source>Context menus</source>
        <translation>Menus contextuels</translation>
    </message>
    <message>
        <source>selected</source>
        <translation>sélectionné</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorateur</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenêtres</translation>
    </message>
    <message>
        <source>active</source>
        <translation>active</translation>
    </message>
</context>
<context>
    <name>ItemTexts</name>
    <message numerus="yes">
        <source>“%1” is for one item, and %n are selected.</source>
        <translation>
            <numerusform>« %1 » s’applique à un seul élément, et %n est sélectionné.</numerusform>
            <numerusform>« %1 » s’applique à un seul élément, et %n sont sélectionnés.</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing here opens %1.</source>
        <translation>Rien ici n’ouvre %1.</translation>
    </message>
</context>
<context>
    <name>JobBar</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Shows all jobs</source>
        <translation>Affiche toutes les tâches</translation>
    </message>
    <message>
        <source>Progress of %1</source>
        <translation>Progression de %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Annuler %1</translation>
    </message>
    <message>
        <source>Jobs…</source>
        <translation>Tâches…</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>Jobs</source>
        <translation>Tâches</translation>
    </message>
</context>
<context>
    <name>JobQuestionBox</name>
    <message>
        <source>“%1” is still running in “%2”.</source>
        <translation>« %1 » est toujours en cours dans « %2 ».</translation>
    </message>
    <message numerus="yes">
        <source>%n jobs are still running in “%1”.</source>
        <translation>
            <numerusform>%n tâche est toujours en cours dans « %1 ».</numerusform>
            <numerusform>%n tâches sont toujours en cours dans « %1 ».</numerusform>
        </translation>
    </message>
    <message>
        <source>If the window closes, the result isn&apos;t shown in it any more.</source>
        <translation>Si la fenêtre est fermée, le résultat n’y sera plus affiché.</translation>
    </message>
    <message>
        <source>&amp;Wait, Then Close</source>
        <translation>&amp;Attendre, puis fermer</translation>
    </message>
    <message>
        <source>&amp;Cancel the Job</source>
        <translation>Ann&amp;uler la tâche</translation>
    </message>
    <message>
        <source>&amp;Leave It Running</source>
        <translation>&amp;Laisser en cours</translation>
    </message>
    <message>
        <source>&amp;Keep Open</source>
        <translation>&amp;Garder ouverte</translation>
    </message>
</context>
<context>
    <name>Jobs</name>
    <message>
        <source>Finished</source>
        <translation>Terminée</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Échouée</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Annulée</translation>
    </message>
    <message>
        <source>%1 isn&apos;t responding to Cancel</source>
        <translation>%1 ne répond pas à « Annuler »</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Annulation…</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Waiting for “%1” (%2)</source>
        <translation>Attend « %1 » (%2)</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>encore %1&#xa0;s environ</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>encore %1&#xa0;min environ</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>an item or window, and its service</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Belongs to: %1</source>
        <translation>Appartient à : %1</translation>
    </message>
    <message>
        <source>Also waiting for “%1” (%2)</source>
        <translation>Attend aussi « %1 » (%2)</translation>
    </message>
    <message>
        <source>This job can&apos;t be cancelled.</source>
        <translation>Cette tâche ne peut pas être annulée.</translation>
    </message>
</context>
<context>
    <name>JobsView</name>
    <message>
        <source>No job is running.</source>
        <translation>Aucune tâche n’est en cours.</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>Job</source>
        <translation>Tâche</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Belongs to</source>
        <translation>Appartient à</translation>
    </message>
    <message>
        <source>Jobs</source>
        <translation>Tâches</translation>
    </message>
    <message>
        <source>Cancel &amp;Job</source>
        <translation>Annuler la &amp;tâche</translation>
    </message>
    <message>
        <source>Clear &amp;Finished</source>
        <translation>&amp;Effacer les tâches terminées</translation>
    </message>
</context>
<context>
    <name>Layouts</name>
    <message>
        <source>“%1” can&apos;t be written: %2</source>
        <translation>Impossible d’écrire « %1 » : %2</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be read: %2</source>
        <translation>Impossible de lire « %1 » : %2</translation>
    </message>
    <message>
        <source>“%1” isn&apos;t a layout.</source>
        <translation>« %1 » n’est pas une disposition.</translation>
    </message>
    <message>
        <source>“%1” is of a later version of this program.</source>
        <translation>« %1 » provient d’une version plus récente de ce programme.</translation>
    </message>
</context>
<context>
    <name>LayoutsDialog</name>
    <message>
        <source>No layout has been saved yet. Window › Layouts › Save Layout keeps the present one.</source>
        <translation>Aucune disposition n’est enregistrée. Fenêtre › Dispositions › Enregistrer la disposition conserve l’actuelle.</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Dispositions</translation>
    </message>
    <message>
        <source>&amp;Use</source>
        <translation>&amp;Utiliser</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Renommer</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exporter…</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importer…</translation>
    </message>
    <message>
        <source>There is a layout “%1” already.</source>
        <translation>Il existe déjà une disposition « %1 ».</translation>
    </message>
    <message>
        <source>Delete the layout “%1”?</source>
        <translation>Supprimer la disposition « %1 » ?</translation>
    </message>
</context>
<context>
    <name>LeaveBox</name>
    <message>
        <source>“%1” has unsaved changes.</source>
        <translation>« %1 » contient des modifications non enregistrées.</translation>
    </message>
    <message>
        <source>Do you want to save them before closing?</source>
        <translation>Voulez-vous les enregistrer avant la fermeture ?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>Your entries in “%1” will be lost.</source>
        <translation>Vos saisies dans « %1 » seront perdues.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved yet. %1</source>
        <translation>Impossible d’enregistrer pour l’instant. %1</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Abandonner</translation>
    </message>
    <message>
        <source>&amp;Keep Editing</source>
        <translation>&amp;Continuer la saisie</translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>Shows or hides the toolbar %1</source>
        <translation>Affiche ou masque la barre d’outils %1</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>À propos de %1</translation>
    </message>
    <message>
        <source>Toolbars</source>
        <translation>Barres d’outils</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorateur</translation>
    </message>
</context>
<context>
    <name>LineEditor</name>
    <message>
        <source>Choose a date</source>
        <translation>Choisir une date</translation>
    </message>
    <message>
        <source>Choose a date: %1</source>
        <translation>Choisir une date : %1</translation>
    </message>
    <message>
        <source>Choose a color</source>
        <translation>Choisir une couleur</translation>
    </message>
    <message>
        <source>Choose a color: %1</source>
        <translation>Choisir une couleur : %1</translation>
    </message>
    <message>
        <source>Choose a folder</source>
        <translation>Choisir un dossier</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Choisir un fichier</translation>
    </message>
    <message>
        <source>Choose a folder: %1</source>
        <translation>Choisir un dossier : %1</translation>
    </message>
    <message>
        <source>Choose a file: %1</source>
        <translation>Choisir un fichier : %1</translation>
    </message>
</context>
<context>
    <name>LogModel</name>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Source</source>
        <translation>Source</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Numéro</translation>
    </message>
    <message>
        <source>Context</source>
        <translation>Contexte</translation>
    </message>
</context>
<context>
    <name>LogPanel</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Save &amp;Report…</source>
        <translation>Enregistrer le &amp;rapport…</translation>
    </message>
</context>
<context>
    <name>LogView</name>
    <message>
        <source>Show only lines with this text</source>
        <translation>N’afficher que les lignes contenant ce texte</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtrer</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>Full Entry</source>
        <translation>Entrée complète</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>The log is empty: there have been no errors.</source>
        <translation>Le journal est vide : aucune erreur.</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <translation>%1 lignes sur %2</translation>
    </message>
</context>
<context>
    <name>LostBar</name>
    <message>
        <source>&amp;Start Again</source>
        <translation>&amp;Redémarrer</translation>
    </message>
    <message>
        <source>Starts the service of this page. What you have entered stays</source>
        <translation>Démarre le service de cette page. Ce que vous avez saisi reste</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>To begin, select an item in the explorer or choose a command from the menus.</source>
        <translation>Pour commencer, sélectionnez un élément dans l’explorateur ou choisissez une commande dans les menus.</translation>
    </message>
    <message>
        <source>Windows</source>
        <translation>Fenêtres</translation>
    </message>
</context>
<context>
    <name>MenuBar</name>
    <message>
        <source>More</source>
        <translation>Plus</translation>
    </message>
</context>
<context>
    <name>MenuBuilder</name>
    <message>
        <source>(empty)</source>
        <translation>(vide)</translation>
    </message>
    <message>
        <source>(no open windows)</source>
        <translation>(aucune fenêtre ouverte)</translation>
    </message>
</context>
<context>
    <name>MenuOutline</name>
    <message>
        <source>Move &amp;Up</source>
        <translation>&amp;Monter</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>&amp;Descendre</translation>
    </message>
    <message>
        <source>&amp;Line Below</source>
        <translation>&amp;Séparateur en dessous</translation>
    </message>
    <message>
        <source>&amp;Undo Move</source>
        <translation>&amp;Annuler le déplacement</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Entrée</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Libellé</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Order of the menus</source>
        <translation>Ordre des menus</translation>
    </message>
    <message>
        <source>Separator</source>
        <translation>Séparateur</translation>
    </message>
    <message>
        <source>%1 (doesn&apos;t appear)</source>
        <translation>%1 (n’apparaît pas)</translation>
    </message>
</context>
<context>
    <name>OpenedFiles</name>
    <message>
        <source>&amp;Clear Recent Files</source>
        <translation>&amp;Effacer les fichiers récents</translation>
    </message>
    <message>
        <source>The file “%1” isn&apos;t there any more.</source>
        <translation>Le fichier « %1 » n’existe plus.</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Fichiers récents</translation>
    </message>
    <message>
        <source>Layout %1</source>
        <translation>Disposition %1</translation>
    </message>
    <message>
        <source>Save Layout</source>
        <translation>Enregistrer la disposition</translation>
    </message>
    <message>
        <source>Name of the layout:</source>
        <translation>Nom de la disposition :</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Remplacer</translation>
    </message>
    <message>
        <source>There is a layout “%1” already. Replace it?</source>
        <translation>Il existe déjà une disposition « %1 ». La remplacer ?</translation>
    </message>
    <message>
        <source>Layouts</source>
        <translation>Dispositions</translation>
    </message>
    <message>
        <source>Export Layout</source>
        <translation>Exporter la disposition</translation>
    </message>
    <message>
        <source>Import Layout</source>
        <translation>Importer une disposition</translation>
    </message>
</context>
<context>
    <name>PageList</name>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Search the pages</source>
        <translation>Rechercher dans les pages</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>No page contains these words.</source>
        <translation>Aucune page ne contient ces mots.</translation>
    </message>
</context>
<context>
    <name>PageMark</name>
    <message>
        <source>This page can&apos;t be shown.</source>
        <translation>Cette page ne peut pas être affichée.</translation>
    </message>
    <message>
        <source>This page has missing or invalid entries.</source>
        <translation>Cette page contient des saisies manquantes ou non valides.</translation>
    </message>
</context>
<context>
    <name>PaletteDialog</name>
    <message>
        <source>Command Palette</source>
        <translation>Palette de commandes</translation>
    </message>
    <message>
        <source>Type a few letters of a command</source>
        <translation>Tapez quelques lettres d’une commande</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Commandes</translation>
    </message>
    <message>
        <source>About the command</source>
        <translation>À propos de la commande</translation>
    </message>
    <message>
        <source>This application has no commands yet.</source>
        <translation>Cette application n’a pas encore de commandes.</translation>
    </message>
    <message>
        <source>No command contains these letters in this order.</source>
        <translation>Aucune commande ne contient ces lettres dans cet ordre.</translation>
    </message>
    <message>
        <source>Unavailable: %1.</source>
        <translation>Indisponible : %1.</translation>
    </message>
</context>
<context>
    <name>PersonalDesktop</name>
    <message>
        <source>acts on “%1”</source>
        <translation>agit sur « %1 »</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
</context>
<context>
    <name>Preview</name>
    <message>
        <source>This is a stub for the page of %1.</source>
        <translation>Ceci est un substitut de la page de %1.</translation>
    </message>
</context>
<context>
    <name>PreviewWindow</name>
    <message>
        <source>Problems</source>
        <translation>Problèmes</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Appels</translation>
    </message>
    <message>
        <source>There is nothing to show yet.

The application appears here as soon as the problems below are fixed.</source>
        <translation>Il n’y a encore rien à montrer.

L’application apparaîtra ici dès que les problèmes ci-dessous seront corrigés.</translation>
    </message>
    <message>
        <source>%1 — Preview</source>
        <translation>%1 – Aperçu</translation>
    </message>
    <message>
        <source>Status of the preview</source>
        <translation>État de l’aperçu</translation>
    </message>
    <message>
        <source>Latest call</source>
        <translation>Dernier appel</translation>
    </message>
    <message>
        <source>Show &amp;Anyway</source>
        <translation>Afficher &amp;quand même</translation>
    </message>
    <message>
        <source>Shows the new definitions and discards unsaved work</source>
        <translation>Affiche les nouvelles définitions et abandonne le travail non enregistré</translation>
    </message>
    <message>
        <source>&amp;Open Window</source>
        <translation>&amp;Ouvrir une fenêtre</translation>
    </message>
    <message>
        <source>Opens a window of the definitions, even without code for it</source>
        <translation>Ouvre une fenêtre des définitions, même sans code</translation>
    </message>
    <message>
        <source>(no windows)</source>
        <translation>(aucune fenêtre)</translation>
    </message>
    <message>
        <source>The folder %1 doesn&apos;t exist or has no folder “Services”.</source>
        <translation>Le dossier %1 n’existe pas ou ne contient pas de dossier « Services ».</translation>
    </message>
    <message>
        <source>As of %1</source>
        <translation>État à %1</translation>
    </message>
    <message>
        <source>The files can&apos;t be read</source>
        <translation>Les fichiers ne peuvent pas être lus</translation>
    </message>
    <message>
        <source>%1; showing the last valid state, from %2</source>
        <translation>%1 ; affichage du dernier état valide, celui de %2</translation>
    </message>
    <message>
        <source>The definitions have changed, but there is unsaved work</source>
        <translation>Les définitions ont changé, mais il reste du travail non enregistré</translation>
    </message>
    <message>
        <source>The definitions have changed and will be shown when the open dialog or editor is closed</source>
        <translation>Les définitions ont changé et seront affichées une fois fermé le dialogue ou le champ ouvert</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>&amp;Redémarrer</translation>
    </message>
    <message>
        <source>Restarts the preview to use the rebuilt plug-in</source>
        <translation>Redémarre l’aperçu pour utiliser le greffon recompilé</translation>
    </message>
    <message>
        <source>%1; rebuilt: %2</source>
        <translation>%1 ; recompilé : %2</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menus</translation>
    </message>
    <message>
        <source>Lists the entries of all menus, to be moved to other places</source>
        <translation>Affiche les entrées de tous les menus pour les déplacer</translation>
    </message>
    <message>
        <source>As of %1: %2</source>
        <translation>État de %1 : %2</translation>
    </message>
    <message>
        <source>The entry can&apos;t be moved: %1</source>
        <translation>L’entrée ne peut pas être déplacée : %1</translation>
    </message>
</context>
<context>
    <name>PrintProgress</name>
    <message>
        <source>Print: %1</source>
        <translation>Imprimer : %1</translation>
    </message>
    <message>
        <source>Sheets</source>
        <translation>Feuilles</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>Laying out sheet %1</source>
        <translation>Mise en page de la feuille %1</translation>
    </message>
    <message>
        <source>Sheet %1 of %2</source>
        <translation>Feuille %1 sur %2</translation>
    </message>
</context>
<context>
    <name>Printout</name>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 sur %2</translation>
    </message>
    <message>
        <source>Page %1</source>
        <translation>Page %1</translation>
    </message>
</context>
<context>
    <name>ProblemList</name>
    <message>
        <source>Location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problème</translation>
    </message>
    <message>
        <source>Remedy</source>
        <translation>Solution</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Règle</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Problèmes</translation>
    </message>
    <message>
        <source>Error in %1</source>
        <translation>Erreur dans %1</translation>
    </message>
    <message>
        <source>Warning in %1</source>
        <translation>Avertissement dans %1</translation>
    </message>
    <message>
        <source>%1 times</source>
        <translation>%1 fois</translation>
    </message>
</context>
<context>
    <name>ProcessWaiting</name>
    <message>
        <source>&amp;Wait</source>
        <translation>&amp;Attendre</translation>
    </message>
    <message>
        <source>Hides this message until the service has answered</source>
        <translation>Masque ce message jusqu’à ce que le service ait répondu</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>A&amp;rrêter</translation>
    </message>
    <message>
        <source>Ends the service; its next command starts it again</source>
        <translation>Met fin au service ; sa prochaine commande le redémarre</translation>
    </message>
    <message>
        <source>“%1” hasn&apos;t answered for %2 s.</source>
        <translation>« %1 » ne répond pas depuis %2 s.</translation>
    </message>
</context>
<context>
    <name>ProgressControl</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>The operation isn&apos;t responding to Cancel</source>
        <translation>L’opération ne réagit pas à « Annuler »</translation>
    </message>
    <message>
        <source>%1 isn&apos;t responding to Cancel</source>
        <translation>%1 ne réagit pas à « Annuler »</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Annulation…</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>encore environ %1&#xa0;s</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>encore environ %1&#xa0;min</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Oui</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Non</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Appliquer</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Réinitialiser</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Valeurs par défaut</translation>
    </message>
</context>
<context>
    <name>QPrintPreviewDialog</name>
    <message>
        <source>Print</source>
        <translation>Imprimer</translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message>
        <source>Save Report</source>
        <translation>Enregistrer le rapport</translation>
    </message>
    <message>
        <source>This is the complete report; nothing is sent. Your home folder, your name and the computer&apos;s name have been removed, but the log may contain names of your files and data. Delete what others shouldn&apos;t read.</source>
        <translation>Voici le rapport complet ; rien n’est envoyé. Votre dossier personnel, votre nom et celui de l’ordinateur ont été retirés, mais le journal peut contenir des noms de vos fichiers et de vos données. Supprimez ce que d’autres ne doivent pas lire.</translation>
    </message>
    <message>
        <source>Report</source>
        <translation>Rapport</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>%1 can&apos;t be written: %2</source>
        <translation>%1 ne peut pas être écrit&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>ScreenPrinter</name>
    <message>
        <source>The screen can&apos;t be captured here</source>
        <translation>L’écran ne peut pas être capturé ici</translation>
    </message>
    <message>
        <source>Desktop</source>
        <translation>Écran</translation>
    </message>
    <message>
        <source>There is no window to print</source>
        <translation>Il n’y a pas de fenêtre à imprimer</translation>
    </message>
    <message>
        <source>Print Preview: %1</source>
        <translation>Aperçu avant impression&#xa0;: %1</translation>
    </message>
    <message>
        <source>“%1” can&apos;t be written</source>
        <translation>« %1 » ne peut pas être écrit</translation>
    </message>
</context>
<context>
    <name>ShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Search for a command, shortcut or owner</source>
        <translation>Rechercher une commande, un raccourci ou un propriétaire</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci</translation>
    </message>
    <message>
        <source>Owner</source>
        <translation>Propriétaire</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Remarque</translation>
    </message>
    <message>
        <source>Commands and their shortcuts</source>
        <translation>Commandes et leurs raccourcis</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Conflit</translation>
    </message>
    <message>
        <source>Reset &amp;All…</source>
        <translation>&amp;Tout réinitialiser…</translation>
    </message>
    <message>
        <source>Reset all shortcuts to the application&apos;s defaults?</source>
        <translation>Rétablir tous les raccourcis par défaut de l’application ?</translation>
    </message>
    <message>
        <source>&amp;New shortcut:</source>
        <translation>&amp;Nouveau raccourci :</translation>
    </message>
    <message>
        <source>New shortcut</source>
        <translation>Nouveau raccourci</translation>
    </message>
    <message>
        <source>A&amp;ssign</source>
        <translation>&amp;Attribuer</translation>
    </message>
    <message>
        <source>No Shor&amp;tcut</source>
        <translation>Auc&amp;un raccourci</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Réinitialiser</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <translation>&amp;Oublier</translation>
    </message>
    <message>
        <source>conflict: %1</source>
        <translation>conflit&#xa0;: %1</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>modifié</translation>
    </message>
    <message>
        <source>changed; was %1</source>
        <translation>modifié&#xa0;; était %1</translation>
    </message>
    <message>
        <source>no longer exists; kept</source>
        <translation>n’existe plus ; conservé</translation>
    </message>
    <message>
        <source>%1 is also the shortcut of %2. Of the available commands, the one that you changed takes precedence, otherwise the first.</source>
        <translation>%1 est aussi le raccourci de %2. Parmi les commandes disponibles, celle que vous avez modifiée est prioritaire, sinon la première.</translation>
    </message>
    <message>
        <source>can&apos;t be changed</source>
        <translation>non modifiable</translation>
    </message>
    <message>
        <source>can&apos;t be changed; commands come first</source>
        <translation>non modifiable&#xa0;; les commandes sont prioritaires</translation>
    </message>
    <message>
        <source>conflict: %1 (%2)</source>
        <translation>conflit&#xa0;: %1 (%2)</translation>
    </message>
    <message>
        <source>instead of %1 (%2)</source>
        <translation>au lieu de %1 (%2)</translation>
    </message>
    <message>
        <source>%1 is reserved for the window: %2. It can&apos;t be assigned to a command.</source>
        <translation>%1 est réservé à la fenêtre : %2. Il ne peut pas être attribué à une commande.</translation>
    </message>
    <message>
        <source>%1 is also used by %2: %3. The command takes precedence.</source>
        <translation>%1 est aussi utilisé par %2 : %3. La commande est prioritaire.</translation>
    </message>
    <message>
        <source>%1 begins with the shortcut of %2, which won&apos;t work any more.</source>
        <translation>%1 commence par le raccourci de %2, qui ne fonctionnera plus.</translation>
    </message>
    <message>
        <source>%1 won&apos;t work, as it is the beginning of the shortcut of %2.</source>
        <translation>%1 ne fonctionne pas, car le raccourci de %2 commence ainsi.</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Show this page while no window is open</source>
        <translation>Afficher cette page tant qu’aucune fenêtre n’est ouverte</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Page d’accueil</translation>
    </message>
</context>
<context>
    <name>Toolbar</name>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Close this toolbar</source>
        <translation>Fermer cette barre d’outils</translation>
    </message>
</context>
<context>
    <name>UnsavedDialog</name>
    <message>
        <source>Unsaved Work</source>
        <translation>Travail non enregistré</translation>
    </message>
    <message>
        <source>These changes haven&apos;t been saved. What you don&apos;t save now will be lost.</source>
        <translation>Ces modifications n’ont pas été enregistrées. Ce que vous n’enregistrez pas maintenant sera perdu.</translation>
    </message>
    <message>
        <source>&amp;Save Checked</source>
        <translation>&amp;Enregistrer la sélection</translation>
    </message>
    <message>
        <source>&amp;Discard All</source>
        <translation>&amp;Tout abandonner</translation>
    </message>
    <message>
        <source>Running Jobs</source>
        <translation>Tâches en cours</translation>
    </message>
    <message>
        <source>These jobs haven&apos;t finished. They will be cancelled.</source>
        <translation>Ces tâches ne sont pas terminées. Elles seront annulées.</translation>
    </message>
    <message>
        <source>These changes haven&apos;t been saved. What you don&apos;t save now will be lost, and jobs that haven&apos;t finished will be cancelled.</source>
        <translation>Ces modifications n’ont pas été enregistrées. Ce que vous n’enregistrez pas maintenant sera perdu, et les tâches qui ne sont pas terminées seront annulées.</translation>
    </message>
    <message>
        <source>Cancel &amp;Jobs and Quit</source>
        <translation>Annuler les tâches et &amp;quitter</translation>
    </message>
    <message>
        <source>&amp;Don&apos;t Quit</source>
        <translation>&amp;Ne pas quitter</translation>
    </message>
    <message>
        <source>Running jobs</source>
        <translation>Tâches en cours</translation>
    </message>
</context>
<context>
    <name>UnsavedWork</name>
    <message>
        <source>“%1” couldn&apos;t be saved: %2</source>
        <translation>« %1 » n’a pas pu être enregistré : %2</translation>
    </message>
    <message>
        <source>Open windows</source>
        <translation>Fenêtres ouvertes</translation>
    </message>
</context>
<context>
    <name>Welcome</name>
    <message>
        <source>Welcome</source>
        <translation>Bienvenue</translation>
    </message>
    <message>
        <source>This can&apos;t be chosen now; maybe something has to be selected first.</source>
        <translation>Ce n’est pas possible maintenant ; il faut peut-être d’abord sélectionner quelque chose.</translation>
    </message>
    <message>
        <source>First Steps</source>
        <translation>Premiers pas</translation>
    </message>
    <message>
        <source>First Steps: %1 of %2 Done</source>
        <translation>Premiers pas : %1 sur %2 faits</translation>
    </message>
    <message>
        <source>Recent Files</source>
        <translation>Fichiers récents</translation>
    </message>
    <message>
        <source>Recent Windows</source>
        <translation>Fenêtres récentes</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Exemples</translation>
    </message>
    <message>
        <source>Find Your Way</source>
        <translation>S’orienter</translation>
    </message>
    <message>
        <source>Find a command by a few of its letters</source>
        <translation>Trouver une commande par quelques lettres</translation>
    </message>
    <message>
        <source>Read the manual</source>
        <translation>Lire le manuel</translation>
    </message>
    <message>
        <source>See all shortcuts</source>
        <translation>Voir tous les raccourcis</translation>
    </message>
    <message>
        <source>Change how the application looks and works</source>
        <translation>Changer l’aspect et le comportement de l’application</translation>
    </message>
</context>
<context>
    <name>WindowBody</name>
    <message>
        <source>This window has no pages.</source>
        <translation>Cette fenêtre n’a pas de pages.</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Étape %1 sur %2&#xa0;: %3</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>The page “%1” has missing or invalid entries.</source>
        <translation>La page « %1 » contient des saisies manquantes ou non valides.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved yet. %1</source>
        <translation>Impossible d’enregistrer pour l’instant. %1</translation>
    </message>
</context>
<context>
    <name>WindowKeys</name>
    <message>
        <source>the window itself</source>
        <translation>la fenêtre elle-même</translation>
    </message>
    <message>
        <source>the explorer</source>
        <translation>l’explorateur</translation>
    </message>
    <message>
        <source>windows with pages</source>
        <translation>les fenêtres à pages</translation>
    </message>
    <message>
        <source>Next window</source>
        <translation>Fenêtre suivante</translation>
    </message>
    <message>
        <source>Previous window</source>
        <translation>Fenêtre précédente</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Menu contextuel</translation>
    </message>
    <message>
        <source>Close window</source>
        <translation>Fermer la fenêtre</translation>
    </message>
    <message>
        <source>First menu</source>
        <translation>Premier menu</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtrer</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Page suivante</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Page précédente</translation>
    </message>
    <message>
        <source>Menu %1</source>
        <translation>Menu %1</translation>
    </message>
    <message>
        <source>Switch to the window used before</source>
        <translation>Passer à la fenêtre utilisée avant</translation>
    </message>
    <message>
        <source>Switch to the window not used for longest</source>
        <translation>Passer à la fenêtre la moins récemment utilisée</translation>
    </message>
    <message>
        <source>Next part: window, explorer, open views</source>
        <translation>Partie suivante : fenêtre, explorateur, vues ouvertes</translation>
    </message>
    <message>
        <source>Previous part</source>
        <translation>Partie précédente</translation>
    </message>
    <message>
        <source>Save window</source>
        <translation>Enregistrer la fenêtre</translation>
    </message>
    <message>
        <source>Move to another item</source>
        <translation>Déplacer vers un autre élément</translation>
    </message>
</context>
<context>
    <name>WindowSwitcher</name>
    <message>
        <source>Open windows, the last used first</source>
        <translation>Fenêtres ouvertes, la dernière utilisée en premier</translation>
    </message>
</context>
<context>
    <name>WizardSteps</name>
    <message>
        <source>Steps</source>
        <translation>Étapes</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source> (optional)</source>
        <translation> (facultatif)</translation>
    </message>
</context>
<context>
    <name>corvane::desktop::WholeFile</name>
    <message>
        <source>The file “%1” can&apos;t be written: %2.</source>
        <translation>Le fichier « %1 » ne peut pas être écrit : %2.</translation>
    </message>
</context>
</TS>
