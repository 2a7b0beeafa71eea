#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>

namespace Importing
{

/// A placement, kept in the form in which it was given: as a matrix, as translation + Euler angles + scale, or as
/// translation + quaternion + scale. Getters of another form convert on demand.
///
/// Euler angles are radians: x = heading (about y), y = attitude (about z), z = bank (about x).
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

    /// What is stored, and what content hashes cover.
    ///
    /// Matrix: 16 floats, row by row. Euler and Quaternion: floats 0-2 translation, 4-6 angles or 4-7 quaternion,
    /// 8-10 scale; the others keep what they were.
    struct StoredForm
    {
        float values[16];
        Type type;
    };

    /// The identity matrix, public and writable; other operations compare matrices against it. The spelling is part of
    /// the interface.
    static D3DXMATRIX Indentity;

    /// The identity, as a matrix.
    Transform();
    Transform(const D3DXMATRIX& matrix);
    /// Copies 16 floats of a matrix, row by row.
    Transform(const float* matrix);
    Transform(const Transform&) = default;
    Transform& operator=(const Transform&) = default;

protected:
    /// The angles of a quaternion, which need not be normalised. The spelling is part of the interface.
    ///
    /// Source: the heading/attitude/bank conversion with pole tests. Deliberate: where |x y + z w| exceeds 0.499 of
    /// the sum of squares (beyond about 86.4 degrees) the attitude is 1.57075, a little short of a right angle, and the
    /// bank is 0.
    virtual void Quaterion2Euler(const D3DXQUATERNION& rotation, D3DXVECTOR3& euler) const;
    /// The unit quaternion of three angles. The spelling is part of the interface.
    virtual D3DXQUATERNION Euler2Quaterion(const D3DXVECTOR3& euler);

public:
    virtual ~Transform();

    virtual Type GetType();

    /// @return the placement as a matrix: scale, then rotation, then translation. A form outside the three known ones
    ///         yields the stored floats.
    virtual D3DXMATRIX GetMatrix();
    virtual void SetMatrix(const D3DXMATRIX& matrix);

    /// Writes translation, angles and scale; nothing when the form is not one of the three. A matrix is taken apart by
    /// D3DXMatrixDecompose, whose result code is ignored.
    /// @return true, in every case.
    virtual bool GetEuler(D3DXVECTOR3& translation, D3DXVECTOR3& rotation, D3DXVECTOR3& scale) const;
    virtual void SetEuler(D3DXVECTOR3& translation, const D3DXVECTOR3& rotation, const D3DXVECTOR3& scale);

    /// Writes translation, quaternion and scale; nothing when the form is not one of the three.
    ///
    /// Deliberate: of a placement stored as angles, the angles themselves come back in x, y, z with w = 1; they are not
    /// converted.
    /// @return true, in every case.
    virtual bool GetQuaterion(D3DXVECTOR3& translation, D3DXQUATERNION& rotation, D3DXVECTOR3& scale) const;
    virtual void SetQuaterion(D3DXVECTOR3& translation, const D3DXQUATERNION& rotation, const D3DXVECTOR3& scale);

    /// The numbers as they are stored.
    const StoredForm& GetStoredForm() const { return stored_; }

private:
    D3DXMATRIX StoredMatrix() const { return D3DXMATRIX(stored_.values); }
    void StoreTranslationAndScale(const D3DXVECTOR3& translation, const D3DXVECTOR3& scale);
    void LoadTranslationAndScale(D3DXVECTOR3& translation, D3DXVECTOR3& scale) const;

    StoredForm stored_;
};

}  // namespace Importing
