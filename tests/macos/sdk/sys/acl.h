#pragma once

// Access lists, as far as the program passes them on.

#include <sys/types.h>

typedef struct _acl* acl_t;
typedef struct _acl_entry* acl_entry_t;
typedef u_int64_t acl_permset_mask_t;
typedef enum
{
    ACL_TYPE_EXTENDED = 0x00000100
} acl_type_t;
typedef enum
{
    ACL_FIRST_ENTRY = 0,
    ACL_NEXT_ENTRY = -1
} acl_entry_id_t;
typedef enum
{
    ACL_UNDEFINED_TAG = 0,
    ACL_EXTENDED_ALLOW = 1,
    ACL_EXTENDED_DENY = 2
} acl_tag_t;
typedef enum
{
    ACL_READ_DATA = 1 << 1,
    ACL_DELETE = 1 << 4,
    ACL_DELETE_CHILD = 1 << 6,
    ACL_WRITE_ATTRIBUTES = 1 << 8
} acl_perm_t;

extern "C" {
acl_t acl_get_fd_np(int nDescriptor, acl_type_t enType);
acl_t acl_get_file(const char* pszPath, acl_type_t enType);
int acl_set_file(const char* pszPath, acl_type_t enType, acl_t pList);
int acl_set_fd_np(int nDescriptor, acl_t pList, acl_type_t enType);
int acl_get_entry(acl_t pList, int nEntry, acl_entry_t* pEntry);
int acl_delete_entry(acl_t pList, acl_entry_t pEntry);
int acl_get_tag_type(acl_entry_t pEntry, acl_tag_t* pTag);
int acl_get_permset_mask_np(acl_entry_t pEntry, acl_permset_mask_t* pMask);
int acl_set_permset_mask_np(acl_entry_t pEntry, acl_permset_mask_t nMask);
int acl_free(void* pList);
}
