<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AppearancePage</name>
    <message>
        <source>As the desktop</source>
        <translation>Comme le bureau</translation>
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
        <source>Free, to be moved and arranged</source>
        <translation>Libres, à déplacer et à disposer</translation>
    </message>
    <message>
        <source>In tabs</source>
        <translation>Dans des onglets</translation>
    </message>
    <message>
        <source>&amp;Theme:</source>
        <translation>&amp;Thème&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Icons on toolbars:</source>
        <translation>&amp;Icônes des barres d’outils&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Windows:</source>
        <translation>&amp;Fenêtres&#xa0;:</translation>
    </message>
</context>
<context>
    <name>Application</name>
    <message>
        <source>The help topic %1 can&apos;t be opened. It belongs into the file %2.</source>
        <translation>La rubrique d’aide %1 ne peut pas être ouverte. Elle doit se trouver dans le fichier %2.</translation>
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
        <source>Something in the window is missing or wrong</source>
        <translation>Quelque chose manque ou est incorrect dans la fenêtre</translation>
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
        <source>Close</source>
        <translation type="vanished">Fermer</translation>
    </message>
    <message>
        <source>Close this toolbar</source>
        <translation type="vanished">Fermer cette barre d’outils</translation>
    </message>
</context>
<context>
    <name>Blame</name>
    <message>
        <source>The last time</source>
        <translation>La dernière fois</translation>
    </message>
    <message>
        <source>The application didn&apos;t answer any more while &quot;%1&quot; was at work.</source>
        <translation>L’application ne répondait plus pendant que «&#xa0;%1&#xa0;» travaillait.</translation>
    </message>
    <message>
        <source>The application ended while &quot;%1&quot; was at work.</source>
        <translation>L’application s’est arrêtée pendant que «&#xa0;%1&#xa0;» travaillait.</translation>
    </message>
    <message>
        <source>It can start without &quot;%1&quot; this time: what that offers is missing then. Safe mode leaves out all plug-ins and what you have changed of the desktop.</source>
        <translation>Elle peut démarrer sans «&#xa0;%1&#xa0;» cette fois-ci&#xa0;: ce que ce service propose manquera alors. Le mode sans échec laisse de côté tous les greffons et vos modifications de l’interface.</translation>
    </message>
    <message>
        <source>Start &amp;Without It</source>
        <translation>Démarrer sans &amp;lui</translation>
    </message>
    <message>
        <source>&amp;Start as Always</source>
        <translation>Démarrer comme &amp;toujours</translation>
    </message>
    <message>
        <source>Safe &amp;Mode</source>
        <translation>&amp;Mode sans échec</translation>
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
        <source>Answered by</source>
        <translation>Réponse de</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Appels</translation>
    </message>
    <message>
        <source>nobody</source>
        <translation>personne</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucune</translation>
    </message>
    <message>
        <source>stand-in</source>
        <translation>substitut</translation>
    </message>
    <message>
        <source>its own code</source>
        <translation>son propre code</translation>
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
        <source>choose an item &quot;%1&quot; in the explorer</source>
        <translation>choisissez un élément «&#xa0;%1&#xa0;» dans l’explorateur</translation>
    </message>
    <message>
        <source>bring the window &quot;%1&quot; to the front</source>
        <translation>amenez la fenêtre «&#xa0;%1&#xa0;» au premier plan</translation>
    </message>
    <message>
        <source>nobody offers it at present</source>
        <translation>personne ne la propose actuellement</translation>
    </message>
    <message>
        <source>nobody offers it at present: %1</source>
        <translation>personne ne la propose actuellement&#xa0;: %1</translation>
    </message>
    <message>
        <source> or </source>
        <translation> ou </translation>
    </message>
    <message>
        <source>%1 isn&apos;t active at present</source>
        <translation>%1 n’est pas actif actuellement</translation>
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
        <source>%1 names no procedure for it</source>
        <translation>%1 n’indique pas de procédure</translation>
    </message>
    <message>
        <source>Toolbar %1</source>
        <translation>Barre d’outils %1</translation>
    </message>
    <message>
        <source>Explorer</source>
        <translation>Explorateur</translation>
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
        <source>What has no check mark isn&apos;t shown. Buttons of toolbars can be moved and added.</source>
        <translation>Ce qui n’est pas coché n’est pas affiché. Les boutons des barres d’outils peuvent être déplacés et ajoutés.</translation>
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
        <source>Show all menus and toolbars as the application has them?</source>
        <translation>Afficher tous les menus et barres d’outils tels que l’application les prévoit&#xa0;?</translation>
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
        <source>Kept for entries that are no longer there:
%1</source>
        <translation>Conservé pour des entrées qui n’existent plus&#xa0;:
%1</translation>
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
    <name>ExplorerPage</name>
    <message>
        <source>Filter</source>
        <translation>Filtrer</translation>
    </message>
    <message>
        <source>Filter of %1</source>
        <translation>Filtre de %1</translation>
    </message>
    <message>
        <source>Shows the items that contain this text (Ctrl+F)</source>
        <translation>Affiche les éléments qui contiennent ce texte (Ctrl+F)</translation>
    </message>
    <message>
        <source>No item matches</source>
        <translation>Aucun élément ne correspond</translation>
    </message>
    <message>
        <source>Nothing here yet. Create or open something from the menus, and it appears in this list.</source>
        <translation>Rien ici pour l’instant. Ce que vous créez ou ouvrez depuis les menus apparaît dans cette liste.</translation>
    </message>
</context>
<context>
    <name>ExplorerPanel</name>
    <message>
        <source>There is nothing to explore. Items appear here once a service brings some along.</source>
        <translation>Il n’y a rien à explorer. Des éléments apparaissent ici dès qu’un service en apporte.</translation>
    </message>
    <message>
        <source>Explorer tabs</source>
        <translation>Onglets de l’explorateur</translation>
    </message>
</context>
<context>
    <name>FailureDialog</name>
    <message>
        <source>Something went wrong</source>
        <translation>Un problème est survenu</translation>
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
        <source>All &amp;problems of this file:</source>
        <translation>Tous les &amp;problèmes de ce fichier&#xa0;:</translation>
    </message>
</context>
<context>
    <name>FailurePresenter</name>
    <message>
        <source>Correct the file at that place and start again. Until then the service is left out.</source>
        <translation>Corrigez le fichier à cet endroit et redémarrez. Jusque-là, le service est laissé de côté.</translation>
    </message>
    <message>
        <source>Correct the name at that place and start again. Until then the service is left out.</source>
        <translation>Corrigez le nom à cet endroit et redémarrez. Jusque-là, le service est laissé de côté.</translation>
    </message>
    <message>
        <source>Check that the plug-in is in the folder &quot;plugins&quot; and that its name is that of the ProgID. Until then the service is left out.</source>
        <translation>Vérifiez que le greffon se trouve dans le dossier «&#xa0;plugins&#xa0;» et que son nom est celui du ProgID. Jusque-là, le service est laissé de côté.</translation>
    </message>
    <message>
        <source>Correct the definition and start again. Until then the service is left out.</source>
        <translation>Corrigez la définition et redémarrez. Jusque-là, le service est laissé de côté.</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, ligne %2</translation>
    </message>
    <message>
        <source>The command couldn&apos;t be finished</source>
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
        <source>Failure %1 from %2</source>
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
        <source>Copies what is wrong to the clipboard</source>
        <translation>Copie la description de l’erreur dans le presse-papiers</translation>
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
        <source>Put here by</source>
        <translation>Placé ici par</translation>
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
        <source>the library; no file names it</source>
        <translation>la bibliothèque&#xa0;; aucun fichier ne le nomme</translation>
    </message>
    <message>
        <source>Also named by</source>
        <translation>Nommé aussi par</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Affiché</translation>
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
        <source>%1 offers it so</source>
        <translation>%1 le propose ainsi</translation>
    </message>
    <message>
        <source>nobody has hidden it</source>
        <translation>personne ne l’a masqué</translation>
    </message>
    <message>
        <source>Can be chosen</source>
        <translation>Peut être choisi</translation>
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
        <source>Stands in</source>
        <translation>Se trouve dans</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci</translation>
    </message>
    <message>
        <source>%1, given by you in place of %2</source>
        <translation>%1, donné par vous à la place de %2</translation>
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
        <source>Alive</source>
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
        <source>What</source>
        <translation>Quoi</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>What the application is made of</source>
        <translation>De quoi l’application est faite</translation>
    </message>
    <message>
        <source>About it</source>
        <translation>À son sujet</translation>
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
        <source>Ctrl+Alt+click on an entry of a menu, a toolbar or the explorer shows it here.</source>
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
        <source>chosen</source>
        <translation>choisi</translation>
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
    <name>LeaveBox</name>
    <message>
        <source>“%1” has changes that aren&apos;t saved.</source>
        <translation>«&#xa0;%1&#xa0;» contient des modifications non enregistrées.</translation>
    </message>
    <message>
        <source>Do you want to save them before it closes?</source>
        <translation>Voulez-vous les enregistrer avant la fermeture&#xa0;?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>What you have entered in “%1” will be lost.</source>
        <translation>Ce que vous avez saisi dans «&#xa0;%1&#xa0;» sera perdu.</translation>
    </message>
    <message>
        <source>It can&apos;t be saved as it is. %1</source>
        <translation>Impossible d’enregistrer en l’état. %1</translation>
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
    <name>LogDialog</name>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
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
    <name>LogModel</name>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Quoi</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Où</translation>
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
        <source>The whole line</source>
        <translation>La ligne entière</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>Nothing has gone wrong yet: the log is empty.</source>
        <translation>Aucun problème jusqu’ici&#xa0;: le journal est vide.</translation>
    </message>
    <message>
        <source>%1 of %2 lines</source>
        <translation>%1 lignes sur %2</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Choose an item in the explorer or a command from the menus to begin.</source>
        <translation>Pour commencer, choisissez un élément dans l’explorateur ou une commande des menus.</translation>
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
        <source>No page has these words.</source>
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
        <source>Something on this page is missing or wrong.</source>
        <translation>Quelque chose manque ou est incorrect sur cette page.</translation>
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
        <source>No command has these letters in this order.</source>
        <translation>Aucune commande ne contient ces lettres dans cet ordre.</translation>
    </message>
    <message>
        <source>Not now: %1.</source>
        <translation>Pas maintenant&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>Preview</name>
    <message>
        <source>The page of %1 comes here. This one stands in for it.</source>
        <translation>La page de %1 viendra ici. Celle-ci la remplace.</translation>
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

As soon as the problems below are mended, the application appears here by itself.</source>
        <translation>Il n’y a encore rien à montrer.

Dès que les problèmes ci-dessous seront corrigés, l’application apparaîtra ici d’elle-même.</translation>
    </message>
    <message>
        <source>%1 — Preview</source>
        <translation>%1 – Aperçu</translation>
    </message>
    <message>
        <source>State of the preview</source>
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
        <source>Shows the new definitions; the unsaved work is lost</source>
        <translation>Affiche les nouvelles définitions&#xa0;; le travail non enregistré est perdu</translation>
    </message>
    <message>
        <source>&amp;Open Window</source>
        <translation>&amp;Ouvrir une fenêtre</translation>
    </message>
    <message>
        <source>Opens a window of the definitions, for which there may be no code yet</source>
        <translation>Ouvre une fenêtre des définitions, pour laquelle il n’y a peut-être pas encore de code</translation>
    </message>
    <message>
        <source>(no windows)</source>
        <translation>(aucune fenêtre)</translation>
    </message>
    <message>
        <source>The folder %1 isn&apos;t there, or has no folder “Services”.</source>
        <translation>Le dossier %1 n’existe pas ou ne contient pas de dossier «&#xa0;Services&#xa0;».</translation>
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
        <source>%1; shown is the last good state, of %2</source>
        <translation>%1&#xa0;; le dernier état correct est affiché, celui de %2</translation>
    </message>
    <message>
        <source>The definitions have changed, but there is unsaved work</source>
        <translation>Les définitions ont changé, mais il reste du travail non enregistré</translation>
    </message>
    <message>
        <source>The definitions have changed and are shown when what is open is closed</source>
        <translation>Les définitions ont changé et seront affichées une fois fermé ce qui est ouvert</translation>
    </message>
    <message>
        <source>&amp;Restart</source>
        <translation>&amp;Redémarrer</translation>
    </message>
    <message>
        <source>Starts the preview again, which then uses the plug-in as it is built now</source>
        <translation>Redémarre l’aperçu, qui utilise alors le greffon tel qu’il est compilé maintenant</translation>
    </message>
    <message>
        <source>%1; built anew: %2</source>
        <translation>%1&#xa0;; recompilé&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>ProblemList</name>
    <message>
        <source>Place</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problème</translation>
    </message>
    <message>
        <source>What to do</source>
        <translation>Que faire</translation>
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
        <source>The work doesn&apos;t answer to Cancel</source>
        <translation>Le travail ne réagit pas à «&#xa0;Annuler&#xa0;»</translation>
    </message>
    <message>
        <source>%1 doesn&apos;t answer to Cancel</source>
        <translation>%1 ne réagit pas à «&#xa0;Annuler&#xa0;»</translation>
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
    <name>ReportDialog</name>
    <message>
        <source>Save Report</source>
        <translation>Enregistrer le rapport</translation>
    </message>
    <message>
        <source>This is all that is saved, and nothing is sent. Your home folder, your name and the machine&apos;s name have been taken out; the log may name files and data of yours. Strike out what others shouldn&apos;t read.</source>
        <translation>Voici tout ce qui est enregistré&#xa0;; rien n’est envoyé. Votre dossier personnel, votre nom et celui de la machine ont été retirés&#xa0;; le journal peut nommer des fichiers et des données à vous. Supprimez ce que d’autres ne doivent pas lire.</translation>
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
        <source>The screen can&apos;t be read here</source>
        <translation>L’écran ne peut pas être lu ici</translation>
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
        <source>&quot;%1&quot; can&apos;t be written</source>
        <translation>«&#xa0;%1&#xa0;» ne peut pas être écrit</translation>
    </message>
</context>
<context>
    <name>ShortcutsDialog</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Search for a command, keys or an owner</source>
        <translation>Rechercher une commande, des touches ou un propriétaire</translation>
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
        <source>Keys</source>
        <translation>Touches</translation>
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
        <source>Commands and their keys</source>
        <translation>Commandes et leurs touches</translation>
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
        <source>Give all commands the keys of the application again?</source>
        <translation>Rendre à toutes les commandes les touches de l’application&#xa0;?</translation>
    </message>
    <message>
        <source>&amp;New keys:</source>
        <translation>&amp;Nouvelles touches&#xa0;:</translation>
    </message>
    <message>
        <source>New keys</source>
        <translation>Nouvelles touches</translation>
    </message>
    <message>
        <source>A&amp;ssign</source>
        <translation>&amp;Attribuer</translation>
    </message>
    <message>
        <source>No &amp;Keys</source>
        <translation>Aucune touc&amp;he</translation>
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
        <source>no longer there; kept</source>
        <translation>n’existe plus&#xa0;; conservé</translation>
    </message>
    <message>
        <source>%1 is also the key of %2. Of those that can be chosen the one that you changed is meant, else the first.</source>
        <translation>%1 est aussi la touche de %2. Parmi celles qui peuvent être choisies, celle que vous avez modifiée l’emporte, sinon la première.</translation>
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
        <source>%1 belongs to the window itself: %2. No command gets it.</source>
        <translation>%1 appartient à la fenêtre elle-même&#xa0;: %2. Aucune commande ne reçoit ces touches.</translation>
    </message>
    <message>
        <source>%1 is also a key of %2: %3. The command gets it instead.</source>
        <translation>%1 a déjà un sens (%2&#xa0;: %3). La commande reçoit ces touches à la place.</translation>
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
        <source>This hasn&apos;t been saved yet. What isn&apos;t saved now will be lost.</source>
        <translation>Ceci n’a pas encore été enregistré. Ce qui n’est pas enregistré maintenant sera perdu.</translation>
    </message>
    <message>
        <source>Unsaved work</source>
        <translation>Travail non enregistré</translation>
    </message>
    <message>
        <source>&amp;Save Checked</source>
        <translation>&amp;Enregistrer la sélection</translation>
    </message>
    <message>
        <source>&amp;Discard All</source>
        <translation>&amp;Tout abandonner</translation>
    </message>
</context>
<context>
    <name>UnsavedWork</name>
    <message>
        <source>&quot;%1&quot; couldn&apos;t be saved: %2</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être enregistré&#xa0;: %2</translation>
    </message>
    <message>
        <source>Open windows</source>
        <translation>Fenêtres ouvertes</translation>
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
        <source>Something on the page “%1” is missing or wrong.</source>
        <translation>Quelque chose manque ou est incorrect sur la page «&#xa0;%1&#xa0;».</translation>
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
        <source>To the explorer, or back to the window</source>
        <translation>Vers l’explorateur, ou retour à la fenêtre</translation>
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
</TS>
