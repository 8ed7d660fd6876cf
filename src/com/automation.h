#pragma once

// The platform's automation headers, in the order that they need.

#include <windows.h>

#include <oaidl.h>
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>
