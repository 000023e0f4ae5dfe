#include "protocol/pages/protocolpdf.h"
