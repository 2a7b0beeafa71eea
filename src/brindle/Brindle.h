#pragma once

/// @file
/// Everything that the host engine library offers to plug-ins.
///
/// This is a stand-in for the host's own library: the same names, signatures, slot order and record layout, with just
/// enough behaviour to run and test plug-ins without the host. The real library can take its place.

#include <brindle/ChannelType.h>
#include <brindle/ShowDebugMessage.h>
#include <brindle/VykFile.h>
#include <brindle/Vyk_Channel.h>
