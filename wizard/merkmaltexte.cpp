#include "wizard/merkmaltexte.h"

std::array<MerkmalTexte, 3> merkmalTexte()
{
    return {{
        {u"Direktes Prüfmerkmal"_qs,
         u"cboDirektesPrüfmerkmal"_qs,
         u"txtDirektesPrüfmerkmalStellen"_qs,
         u"udDirektesPrüfmerkmalStellen"_qs,
         {u"&Name:"_qs, u"&Formelzeichen:"_qs, u"&Einheit:"_qs, u"Nach&kommastellen:"_qs},
         {u"Bitte geben Sie ein Direktes Prüfmerkmal an."_qs,
          u"Bitte geben Sie ein gültiges Formelzeichen für das direkte Prüfmerkmal an."_qs,
          u"Bitte geben Sie ein gültige Einheit für das direkte Prüfmerkmal an."_qs}},
        {u"Indirektes Prüfmerkmal"_qs,
         u"cboIndirektesPrüfmerkmal"_qs,
         u"txtIndirektesPrüfmerkmalStellen"_qs,
         u"udIndirektesPrüfmerkmalStellen"_qs,
         {u"N&ame:"_qs, u"F&ormelzeichen:"_qs, u"E&inheit:"_qs, u"Na&chkommastellen:"_qs},
         {u"Bitte geben Sie ein Indirektes Prüfmerkmal an."_qs,
          u"Bitte geben Sie ein gültiges Formelzeichen für das indirekte Prüfmerkmal an."_qs,
          u"Bitte geben Sie ein gültige Einheit für das indirekte Prüfmerkmal an."_qs}},
        {u"Kovariable"_qs,
         u"cboMessreihe"_qs,
         u"txtMessreiheStellen"_qs,
         u"UpDown1"_qs,
         {u"Na&me:"_qs, u"Fo&rmelzeichen:"_qs, u"Einhei&t:"_qs, u"Nachkommaste&llen:"_qs},
         {u"Bitte geben Sie eine Messreihe an."_qs,
          u"Bitte geben Sie ein gültiges Formelzeichen für die Messreihen an."_qs,
          u"Bitte geben Sie ein gültige Einheit für die Messreihen an."_qs}},
    }};
}
