#include "Formulas/CalcExpr.h"
