#ifndef VEM_EXPORT_H_
#define VEM_EXPORT_H_

/// Marks what the shared libraries export; everything else in them is hidden.
#define VEM_EXPORT __attribute__((visibility("default")))

/// Stands before the members whose bodies are in a header, for a caller's compiler to use. The
/// library exports them too: it compiles each such header once with VEM_EMIT_MEMBERS defined.
#ifdef VEM_EMIT_MEMBERS
#define VEM_INLINE VEM_EXPORT
#else
#define VEM_INLINE VEM_EXPORT inline
#endif

#endif  // VEM_EXPORT_H_
