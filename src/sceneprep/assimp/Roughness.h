#pragma once

namespace Sceneprep
{

/// Converts a specular power p to a roughness from 0 to 1: the fourth root of 2 / (p + 2). Highlights then have the
/// same width if the squared roughness is the parameter of the microfacet distribution; see Walter et al., "Microfacet
/// Models for Refraction through Rough Surfaces", 2007. A power below 0 counts as 0.
float RoughnessOf(float power);

/// Converts a roughness to a specular power: the inverse of RoughnessOf(), at most 1,000,000.
float PowerOf(float roughness);

}  // namespace Sceneprep
