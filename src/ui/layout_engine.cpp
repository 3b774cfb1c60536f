#include "ui/layout_engine.h"
