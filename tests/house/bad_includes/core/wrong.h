#include "app/main.h"
#include <QtWidgets/QWidget>
