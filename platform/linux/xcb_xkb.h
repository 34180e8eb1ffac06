// xcb's keyboard extension; one of its structures has a member with the name of a C++ keyword.
#pragma once

#include <xcb/xcb.h>

#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
