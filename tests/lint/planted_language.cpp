/// What the server tells of the user stands here so long as nobody says anything else.
int seeded_violation = 0;
