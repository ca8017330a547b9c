<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>CAIChatEntryButton</name>
    <message>
        <source>AI chat is open here (scene %1)</source>
        <translation>Le chat IA est ouvert ici (scène %1)</translation>
    </message>
    <message>
        <source>Forced open by the developer override (scene %1)</source>
        <translation>Ouverture forcée par le réglage développeur (scène %1)</translation>
    </message>
    <message>
        <source>Forced closed by the developer override (scene %1)</source>
        <translation>Fermeture forcée par le réglage développeur (scène %1)</translation>
    </message>
    <message>
        <source>Off: the server has not opened AI chat here to you (scene %1)</source>
        <translation>Désactivé : le serveur ne vous a pas ouvert le chat IA ici (scène %1)</translation>
    </message>
    <message>
        <source>Off: log in to use AI chat (scene %1)</source>
        <translation>Désactivé : connectez-vous pour utiliser le chat IA (scène %1)</translation>
    </message>
    <message>
        <source>Off: the module that serves AI chat is not there (scene %1)</source>
        <translation>Désactivé : le module qui fournit le chat IA est absent (scène %1)</translation>
    </message>
    <message>
        <source>AI chat</source>
        <translation>Chat IA</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): forced open by the developer override</source>
        <translation>Chat IA, %1 (scène %2) : ouverture forcée par le réglage développeur</translation>
    </message>
    <message>
        <source>AI chat, %1 (scene %2): opened by the server to this user</source>
        <translation>Chat IA, %1 (scène %2) : ouvert par le serveur à cet utilisateur</translation>
    </message>
</context>
<context>
    <name>CAdPanelWindow</name>
    <message>
        <source>The module that serves ads is not there</source>
        <translation>Le module qui sert les publicités n&apos;est pas là</translation>
    </message>
    <message>
        <source>Popup panel</source>
        <translation>Panneau du popup</translation>
    </message>
</context>
<context>
    <name>CComposition</name>
    <message>
        <source>Settings are neither read nor saved: their file is not available</source>
        <translation>Réglages ni lus ni enregistrés : leur fichier n&apos;est pas disponible</translation>
    </message>
    <message>
        <source>Settings are not saved: their file or folder is read-only</source>
        <translation>Réglages non enregistrés : le fichier ou le dossier est en lecture seule</translation>
    </message>
    <message>
        <source>Settings are not saved: the disk is full or fails</source>
        <translation>Réglages non enregistrés : le disque est plein ou en panne</translation>
    </message>
    <message>
        <source>Settings are not saved: another client uses this folder</source>
        <translation>Réglages non enregistrés : un autre client utilise ce dossier</translation>
    </message>
    <message>
        <source>Settings are not saved: a newer version wrote their file</source>
        <translation>Réglages non enregistrés : une version plus récente a écrit le fichier</translation>
    </message>
    <message>
        <source>Settings are saved later: another program locks their file</source>
        <translation>Réglages enregistrés plus tard : un autre programme verrouille le fichier</translation>
    </message>
    <message>
        <source>Starting the server</source>
        <translation>Démarrage du serveur</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Connecté</translation>
    </message>
    <message>
        <source>No connection (%1), trying again in %2 s</source>
        <translation>Pas de connexion (%1), nouvel essai dans %2 s</translation>
    </message>
    <message>
        <source>The login of user %1 is refused: %2</source>
        <translation>La connexion de l&apos;utilisateur %1 est refusée : %2</translation>
    </message>
    <message>
        <source>The server does not run (%1), starting it again</source>
        <translation>Le serveur est arrêté (%1), redémarrage en cours</translation>
    </message>
    <message>
        <source>The server does not answer (%1)</source>
        <translation>Le serveur ne répond pas (%1)</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Workbench</source>
        <translation>Atelier</translation>
    </message>
    <message>
        <source>Opened: %1</source>
        <translation>Ouvert : %1</translation>
    </message>
</context>
<context>
    <name>CMembershipCard</name>
    <message>
        <source>Edition</source>
        <translation>Édition</translation>
    </message>
    <message>
        <source>VIP system</source>
        <translation>Système VIP</translation>
    </message>
    <message>
        <source>Membership</source>
        <translation>Abonnement</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>Formule</translation>
    </message>
    <message>
        <source>Trial</source>
        <translation>Essai</translation>
    </message>
    <message>
        <source>Renewed or free of charge</source>
        <translation>Reconduit ou offert</translation>
    </message>
    <message>
        <source>Asset protection</source>
        <translation>Protection par les avoirs</translation>
    </message>
    <message>
        <source>Expired</source>
        <translation>Expiré</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message>
        <source>Not renewed</source>
        <translation>Non reconduit</translation>
    </message>
    <message>
        <source>Not known</source>
        <translation>Inconnue</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>Jours restants : %1</translation>
    </message>
    <message>
        <source>No member</source>
        <translation>Non membre</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>Membre</translation>
    </message>
    <message>
        <source>Member of grade %1</source>
        <translation>Membre de niveau %1</translation>
    </message>
    <message>
        <source>Membership centre</source>
        <translation>Espace membre</translation>
    </message>
    <message>
        <source>Nobody is logged in</source>
        <translation>Personne n&apos;est connecté</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1 : %2</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Nouveau</translation>
    </message>
    <message>
        <source>Older</source>
        <translation>Ancien</translation>
    </message>
    <message>
        <source>Right %1</source>
        <translation>Droit %1</translation>
    </message>
</context>
<context>
    <name>CNavigation</name>
    <message>
        <source>Expand the navigation</source>
        <translation>Déployer la navigation</translation>
    </message>
    <message>
        <source>Collapse the navigation</source>
        <translation>Réduire la navigation</translation>
    </message>
</context>
<context>
    <name>CNoticeBanner</name>
    <message>
        <source>The client goes on without a module. %1</source>
        <translation>Le client continue sans un module. %1</translation>
    </message>
</context>
<context>
    <name>CTitleBar</name>
    <message>
        <source>Nobody is logged in</source>
        <translation>Personne n&apos;est connecté</translation>
    </message>
    <message>
        <source>Switch the user</source>
        <translation>Changer d&apos;utilisateur</translation>
    </message>
    <message>
        <source>Show or hide the workbench</source>
        <translation>Afficher ou masquer l&apos;atelier</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>Membre</translation>
    </message>
</context>
<context>
    <name>CUserMenu</name>
    <message>
        <source>Find a user</source>
        <translation>Trouver un utilisateur</translation>
    </message>
    <message>
        <source>Log out</source>
        <translation>Déconnexion</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
</context>
<context>
    <name>CVipGallery</name>
    <message>
        <source>Main texts</source>
        <translation>Textes principaux</translation>
    </message>
    <message>
        <source>Detail texts</source>
        <translation>Textes de détail</translation>
    </message>
    <message>
        <source>Detail sub texts</source>
        <translation>Textes secondaires</translation>
    </message>
    <message>
        <source>The user has no record</source>
        <translation>L&apos;utilisateur n&apos;a pas de fiche</translation>
    </message>
    <message>
        <source>Activation type</source>
        <translation>Type d&apos;activation</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>Jours restants</translation>
    </message>
    <message>
        <source>Layout letter</source>
        <translation>Lettre de mise en page</translation>
    </message>
    <message>
        <source>VIP gallery</source>
        <translation>Galerie VIP</translation>
    </message>
    <message>
        <source>As the server sent it</source>
        <translation>Tel que le serveur l&apos;a envoyé</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>About this right</source>
        <translation>À propos de ce droit</translation>
    </message>
    <message>
        <source>Watchlist</source>
        <translation>Favoris</translation>
    </message>
    <message>
        <source>The instruments you follow</source>
        <translation>Les titres que vous suivez</translation>
    </message>
    <message>
        <source>Quotes</source>
        <translation>Cotations</translation>
    </message>
    <message>
        <source>Price, order book and key figures</source>
        <translation>Cours, carnet d&apos;ordres et chiffres clés</translation>
    </message>
    <message>
        <source>Research</source>
        <translation>Analyses</translation>
    </message>
    <message>
        <source>What our analysts think</source>
        <translation>L&apos;avis de nos analystes</translation>
    </message>
    <message>
        <source>News</source>
        <translation>Actualités</translation>
    </message>
    <message>
        <source>What moves the markets today</source>
        <translation>Ce qui fait bouger les marchés</translation>
    </message>
    <message>
        <source>Portfolio</source>
        <translation>Portefeuille</translation>
    </message>
    <message>
        <source>What you hold, and how it does</source>
        <translation>Vos positions et leur évolution</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>Exécuté</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Annulé</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Buying power</source>
        <translation>Pouvoir d&apos;achat</translation>
    </message>
    <message>
        <source>Margin used</source>
        <translation>Marge utilisée</translation>
    </message>
    <message>
        <source>Cash</source>
        <translation>Liquidités</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>Side</source>
        <translation>Sens</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Quantité</translation>
    </message>
    <message>
        <source>Order price</source>
        <translation>Limite</translation>
    </message>
    <message>
        <source>State</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Buy</source>
        <translation>Achat</translation>
    </message>
    <message>
        <source>Sell</source>
        <translation>Vente</translation>
    </message>
    <message>
        <source>Today&apos;s orders</source>
        <translation>Ordres du jour</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Condition</source>
        <translation>Condition</translation>
    </message>
    <message>
        <source>Alert price</source>
        <translation>Cours d&apos;alerte</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Dernier</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Écart</translation>
    </message>
    <message>
        <source>Rises above</source>
        <translation>Dépasse</translation>
    </message>
    <message>
        <source>Falls below</source>
        <translation>Passe sous</translation>
    </message>
    <message>
        <source>Reached</source>
        <translation>Atteinte</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Sector</source>
        <translation>Secteur</translation>
    </message>
    <message>
        <source>Change %</source>
        <translation>Var. %</translation>
    </message>
    <message>
        <source>Advancing</source>
        <translation>En hausse</translation>
    </message>
    <message>
        <source>Declining</source>
        <translation>En baisse</translation>
    </message>
    <message>
        <source>Turnover</source>
        <translation>Capitaux</translation>
    </message>
    <message>
        <source>Leader</source>
        <translation>En tête</translation>
    </message>
    <message>
        <source>Open the quotes</source>
        <translation>Voir les cours</translation>
    </message>
    <message>
        <source>Sample data</source>
        <translation>Données d&apos;exemple</translation>
    </message>
    <message>
        <source>Avg. cost</source>
        <translation>Coût moyen</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Profit / loss</source>
        <translation>Gain / perte</translation>
    </message>
    <message>
        <source>Total value</source>
        <translation>Valeur totale</translation>
    </message>
    <message>
        <source>Day&apos;s result</source>
        <translation>Résultat du jour</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Aujourd&apos;hui</translation>
    </message>
    <message>
        <source>Key figures</source>
        <translation>Chiffres clés</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouverture</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Plus haut</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Plus bas</translation>
    </message>
    <message>
        <source>Previous close</source>
        <translation>Clôture préc.</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>Market cap</source>
        <translation>Capitalisation</translation>
    </message>
    <message>
        <source>Bid size</source>
        <translation>Qté achat</translation>
    </message>
    <message>
        <source>Bid</source>
        <translation>Achat</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>Vente</translation>
    </message>
    <message>
        <source>Ask size</source>
        <translation>Qté vente</translation>
    </message>
    <message>
        <source>Order book</source>
        <translation>Carnet d&apos;ordres</translation>
    </message>
    <message>
        <source>Reduce</source>
        <translation>Alléger</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>Conserver</translation>
    </message>
    <message>
        <source>Target %1</source>
        <translation>Objectif %1</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Variation</translation>
    </message>
    <message>
        <source>Order intake turns the corner</source>
        <translation>Les commandes repartent</translation>
    </message>
    <message>
        <source>New lines come on stream two quarters early. We raise our estimates for the next year and see the margin back at its old level by autumn.</source>
        <translation>Les nouvelles lignes démarrent avec deux trimestres d&apos;avance. Nous relevons nos estimations et voyons la marge revenir à son niveau d&apos;ici l&apos;automne.</translation>
    </message>
    <message>
        <source>Steady cash, few surprises</source>
        <translation>Trésorerie stable, peu de surprises</translation>
    </message>
    <message>
        <source>The clinics fill as planned and the dividend is covered twice. What is missing is a reason to pay more than today&apos;s price.</source>
        <translation>Les cliniques se remplissent comme prévu et le dividende est couvert deux fois. Il manque une raison de payer plus cher.</translation>
    </message>
    <message>
        <source>Freight rates weigh on the second half</source>
        <translation>Les taux de fret pèsent sur le second semestre</translation>
    </message>
    <message>
        <source>Spot rates fell for the sixth week. Two ships due in spring add capacity at the wrong moment; we take our target down.</source>
        <translation>Les taux au comptant reculent pour la sixième semaine. Deux navires livrés au printemps arrivent au mauvais moment ; nous abaissons l&apos;objectif.</translation>
    </message>
    <message>
        <source>Glasshouse Software reports growth above its own guidance</source>
        <translation>Glasshouse Software annonce une croissance supérieure à ses prévisions</translation>
    </message>
    <message>
        <source>Pacific 200 ends the week a little higher in quiet trade</source>
        <translation>Le Pacific 200 termine la semaine en légère hausse dans un marché calme</translation>
    </message>
    <message>
        <source>Cygnet Robotics wins a ten-year warehouse contract</source>
        <translation>Cygnet Robotics remporte un contrat d&apos;entrepôts de dix ans</translation>
    </message>
    <message>
        <source>Brentfield Energy brings its third harbour wind park on line</source>
        <translation>Brentfield Energy met en service son troisième parc éolien portuaire</translation>
    </message>
    <message>
        <source>Central bank keeps its rate, and says what would change its mind</source>
        <translation>La banque centrale maintient son taux et dit ce qui la ferait changer d&apos;avis</translation>
    </message>
    <message>
        <source>Dromore Logistics opens a rail link to the inland terminals</source>
        <translation>Dromore Logistics ouvre une liaison ferroviaire vers ses terminaux intérieurs</translation>
    </message>
    <message>
        <source>Technology</source>
        <translation>Technologie</translation>
    </message>
    <message>
        <source>Energy</source>
        <translation>Énergie</translation>
    </message>
    <message>
        <source>Health care</source>
        <translation>Santé</translation>
    </message>
    <message>
        <source>Industry</source>
        <translation>Industrie</translation>
    </message>
    <message>
        <source>Consumer goods</source>
        <translation>Consommation</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>Matériaux</translation>
    </message>
    <message>
        <source>Market</source>
        <translation>Marchés</translation>
    </message>
    <message>
        <source>The day, sector by sector</source>
        <translation>La journée, secteur par secteur</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alertes</translation>
    </message>
    <message>
        <source>The prices you want to hear of</source>
        <translation>Les cours dont vous voulez être averti</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>Compte</translation>
    </message>
    <message>
        <source>Your means, and the day&apos;s orders</source>
        <translation>Vos moyens et les ordres du jour</translation>
    </message>
    <message>
        <source>Analyst consensus</source>
        <translation>Consensus des analystes</translation>
    </message>
    <message>
        <source>Short selling</source>
        <translation>Ventes à découvert</translation>
    </message>
    <message>
        <source>Sold short</source>
        <translation>Vendu à découvert</translation>
    </message>
    <message>
        <source>Days to cover</source>
        <translation>Jours de rachat</translation>
    </message>
    <message>
        <source>Borrow fee %</source>
        <translation>Frais d&apos;emprunt %</translation>
    </message>
</context>
<context>
    <name>RightStates</name>
    <message>
        <source>No state</source>
        <translation>Sans état</translation>
    </message>
    <message>
        <source>Limited time</source>
        <translation>Durée limitée</translation>
    </message>
    <message>
        <source>Frozen</source>
        <translation>Gelé</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Actif</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Vide</translation>
    </message>
    <message>
        <source>Not activated</source>
        <translation>Non activé</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Prêt</translation>
    </message>
</context>
</TS>
