#pragma once

/// @file
/// Includes everything that the host engine library offers to plug-ins.
///
/// This library is a stand-in for the host's own library: it has the same names, signatures, slot order and record
/// layout, and just enough behaviour to run and test plug-ins without the host. The real library can replace it.

#include <brindle/ChannelType.h>
#include <brindle/ShowDebugMessage.h>
#include <brindle/VykFile.h>
#include <brindle/Vyk_Channel.h>
