#pragma once
/* Ids that resource script and code share; the script's compiler reads this too. */
#define IDI_ADDON 101
