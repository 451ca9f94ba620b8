#include "text_decoding.h"
