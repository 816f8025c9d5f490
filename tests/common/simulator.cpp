#include "simulator.h"
