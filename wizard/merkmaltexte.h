#pragma once

#include "wizard/merkmalgruppe.h"

#include <array>

/// Names, labels and messages of the direct and the indirect characteristic and the covariable. No
/// two labels of the page share a mnemonic, nor do they take one of the menus or of the wizard's
/// buttons.
std::array<MerkmalTexte, 3> merkmalTexte();
