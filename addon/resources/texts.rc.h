/* The string table, from the same list that makes the portable table: whoever translates it replaces every text. */
STRINGTABLE
BEGIN
#define ORV_TEXT(name, id, english) id, english
#include "text/texts.def"
#undef ORV_TEXT
END
