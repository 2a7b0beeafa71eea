#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// A transform, stored in the form in which it was set: a matrix; translation, Euler angles and scale; or translation,
/// quaternion and scale. Getters of another form convert.
///
/// Euler angles are in radians: x = heading (about y), y = attitude (about z), z = bank (about x).
///
/// Every operation costs constant time and throws nothing.
class IMPORTING_API Transform
{
public:
    /// The form of the stored numbers.
    enum class Type : std::int32_t
    {
        Matrix = 0,
        Euler = 1,
        Quaternion = 2
    };

    /// The stored values. Content hashes cover all of them.
    ///
    /// Matrix: 16 floats, row by row. Euler and Quaternion: floats 0-2 are the translation, 4-6 the angles or 4-7 the
    /// quaternion, 8-10 the scale; the other floats keep their previous values.
    struct StoredForm
    {
        float values[16];
        Type type;
    };

    /// The identity matrix. It is public and writable, and other operations compare matrices with it. The spelling is
    /// part of the interface.
    static D3DXMATRIX Indentity;

    /// Creates the identity, in matrix form.
    Transform();
    Transform(const D3DXMATRIX& matrix);
    /// Creates a transform in matrix form from 16 floats, row by row.
    Transform(const float* matrix);
    Transform(const Transform&) = default;
    Transform& operator=(const Transform&) = default;

protected:
    /// Writes the Euler angles of a quaternion, which need not be normalised. The spelling is part of the interface.
    ///
    /// This is the heading/attitude/bank conversion with tests for the two poles. Deliberate: where |x y + z w| exceeds
    /// 0.499 of the sum of squares (an attitude beyond about 86.4 degrees), the attitude is 1.57075, slightly less than
    /// a right angle, and the bank is 0.
    virtual void Quaterion2Euler(const D3DXQUATERNION& rotation, D3DXVECTOR3& euler) const;
    /// Returns the unit quaternion of three Euler angles. The spelling is part of the interface.
    virtual D3DXQUATERNION Euler2Quaterion(const D3DXVECTOR3& euler);

public:
    virtual ~Transform();

    /// Returns the form in which the transform is stored.
    virtual Type GetType();

    /// Returns the transform as a matrix: scale, then rotation, then translation. A type outside the enumeration
    /// returns the stored floats.
    virtual D3DXMATRIX GetMatrix();
    /// Stores a matrix and changes the form to Matrix.
    virtual void SetMatrix(const D3DXMATRIX& matrix);

    /// Writes translation, Euler angles and scale. A matrix is decomposed by D3DXMatrixDecompose, whose result code is
    /// ignored. A type outside the enumeration writes nothing.
    /// @return always true.
    virtual bool GetEuler(D3DXVECTOR3& translation, D3DXVECTOR3& rotation, D3DXVECTOR3& scale) const;
    /// Stores translation, Euler angles and scale and changes the form to Euler.
    virtual void SetEuler(D3DXVECTOR3& translation, const D3DXVECTOR3& rotation, const D3DXVECTOR3& scale);

    /// Writes translation, quaternion and scale. A type outside the enumeration writes nothing.
    ///
    /// Deliberate: Euler angles are not converted. The three angles are written as x, y, z of the quaternion, with w =
    /// 1.
    /// @return always true.
    virtual bool GetQuaterion(D3DXVECTOR3& translation, D3DXQUATERNION& rotation, D3DXVECTOR3& scale) const;
    /// Stores translation, quaternion and scale and changes the form to Quaternion.
    virtual void SetQuaterion(D3DXVECTOR3& translation, const D3DXQUATERNION& rotation, const D3DXVECTOR3& scale);

    /// Returns the stored values.
    const StoredForm& GetStoredForm() const { return stored_; }

private:
    D3DXMATRIX StoredMatrix() const { return D3DXMATRIX(stored_.values); }
    void StoreTranslationAndScale(const D3DXVECTOR3& translation, const D3DXVECTOR3& scale);
    void LoadTranslationAndScale(D3DXVECTOR3& translation, D3DXVECTOR3& scale) const;

    StoredForm stored_;
};

}  // namespace Importing
