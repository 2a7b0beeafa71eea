#pragma once

namespace Sceneprep
{

/// The roughness r of a specular power p, 0 to 1: the fourth root of 2 / (p + 2). Both make a highlight of one width
/// when r squared is the parameter of the microfacets' distribution; source: Walter et al., "Microfacet Models for
/// Refraction through Rough Surfaces", 2007. A power below 0 counts as 0.
float RoughnessOf(float power);

/// @return the specular power of a roughness: the inverse of RoughnessOf(), at most 1,000,000.
float PowerOf(float roughness);

}  // namespace Sceneprep
