#pragma once

// Access lists, as far as the program passes them on.

typedef struct _acl* acl_t;
typedef enum
{
    ACL_TYPE_EXTENDED = 0x00000100
} acl_type_t;

extern "C" {
acl_t acl_get_fd_np(int nDescriptor, acl_type_t enType);
acl_t acl_get_file(const char* pszPath, acl_type_t enType);
int acl_set_file(const char* pszPath, acl_type_t enType, acl_t pList);
int acl_set_fd_np(int nDescriptor, acl_t pList, acl_type_t enType);
int acl_free(void* pList);
}
