/*
 * The binary boundary between Quillmate and a plug-in: every record the two
 * exchange, laid out as the host expects on Win64 (8-byte alignment,
 * little-endian). Compiles as C and as C++.
 *
 * Ownership. "host-owned": belongs to the host, valid during the call that
 * hands it over, never freed by the plug-in. "plug-in-owned": lives inside
 * the plug-in object until the library unloads. Every block of memory that
 * changes hands comes from QMGetMemory and goes back through QMFreeMemory
 * with the size in bytes it was taken with; who frees it is said where it
 * crosses.
 *
 * Text is zero-terminated UTF-16LE (char16_t, never wchar_t, which is 4 bytes
 * on Linux). Sizes count bytes unless a comment says characters; "terminator
 * included" is said where it is. LongBool: 4 bytes, 0 false, anything else
 * true; the plug-in writes true as -1.
 *
 * Threads. The module starts no threads and takes no locks. InitQMPlugin,
 * the plug-in's configuration entry points (ConfigAction, ActionDescr,
 * DeleteAction, PluginConfig, About, SetLocale, the image exports) come on
 * the host's user-interface thread; ExecAction and JobStop on the thread the
 * host runs the task on, one step of a task after another. The host's own
 * procedures may be called from either.
 */
#ifndef QMCSV_HOST_ABI_H
#define QMCSV_HOST_ABI_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#include <uchar.h>
extern "C" {
#else
#include <uchar.h>
#endif

typedef int32_t LongBool;
enum { kLongTrue = -1, kLongFalse = 0 };

/* TAFInfoType: log levels. */
enum { itInfo = 0, itWarning = 1, itError = 2, itNeutral = 3, itDebug = 4 };
/* TAFActionType. */
enum { atSimple = 0, atBeginLoop = 1, atEndLoop = 2, atElse = 3, atEndIf = 4, atIf = 5, atElseIf = 6 };
/* TAFJobState. */
enum { jsManual = 0, jsIdle = 1, jsDisabled = 2, jsRunning = 3, jsStopped = 4 };
/* TWhereAddMenuItem. */
enum { waMainMenu = 0, waTrayMenu = 1 };

typedef struct TAFActionInfo TAFActionInfo;

/* Host procedures. Every text argument the plug-in passes is plug-in-owned
   and read by the host during the call only. */
typedef void (*TAFSimpleProc)(void);
/* One line of the host's general log at level infoType (itInfo ...). */
typedef void (*TAFInfoOut)(int32_t infoType, const char16_t* infoStr);
/* QMGetMemory: *p receives a block of `size` bytes from the host allocator.
   QMFreeMemory: gives *p back; size must be the size it was taken with. p is
   the address of the caller's pointer variable. */
typedef void (*TAFGetFreeMem)(void** p, int32_t size);
typedef void (*TAFJobsEnumProc)(int32_t jobId, const char16_t* jobName, int32_t state, uintptr_t context);
typedef void (*TAFJobsEnum)(TAFJobsEnumProc proc, uintptr_t context);
typedef void (*TAFJobsEnumENV)(TAFJobsEnumProc proc, uintptr_t context, LongBool checkEnv);
typedef uintptr_t (*TAFJobRunProc)(int32_t jobId, const char16_t* cause, const char16_t* parameters,
                                   LongBool guarantee);
typedef void (*TAFJobProc)(int32_t jobId);
typedef void (*TAFJobStopProc)(int32_t jobId, LongBool kill);
typedef uintptr_t (*TAFAddMenuItem)(const char16_t* caption, const char16_t* shortcut, TAFSimpleProc proc,
                                    int32_t whereAdd);
typedef void (*TAFRemoveMenuItem)(uintptr_t handle);
/* Expands {variables} in source into the caller's buf. bufSize counts bytes,
   the terminator included, both ways: in, the room at buf; out, the size of
   the result. On a buffer too small the host sets *error, writes the size it
   needs and leaves buf undefined; the caller retries with that size. */
typedef void (*TAFExpandText)(const char16_t* source, char16_t* buf, int32_t* bufSize, LongBool* error);
/* The host's variable picker (configuration dialogs, UI thread): writes the
   picked reference, zero-terminated, into the caller's buf of bufSize
   characters; false when the user cancelled. */
typedef LongBool (*TAFSelectVar)(char16_t* buf, int32_t bufSize);
typedef void (*TAFGetVarValue)(const char16_t* varName, const char16_t* params, char16_t* buffer, int32_t* bufSize,
                               LongBool* error, uint32_t threadId);
typedef void (*TAFAddVar)(const char16_t* name, const char16_t* description, const char16_t* cat, TAFGetVarValue proc);
typedef int32_t (*TAFGetCurrentJobID)(void);
/* Sets (creates) a host variable; the host copies both texts. */
typedef void (*TAFUserVarProc)(const char16_t* name, const char16_t* value);
/* Shows the host's about box. icon: plug-in-owned HICON or null. */
typedef void (*TAFPluinAbout)(void* icon, const char16_t* title, const char16_t* addon, int32_t pluginId);

/* A step as the host describes it (host-owned). */
typedef struct TQMActionPassport TQMActionPassport;

typedef void (*TQMEnumActionsProc)(int32_t step, TQMActionPassport* info, const char16_t* params, uintptr_t context);
typedef void (*TQMEnumActions)(int32_t taskId, TQMEnumActionsProc proc, uintptr_t context);
typedef int32_t (*TQMGetNextStep)(int32_t taskId);
typedef LongBool (*TQMSetNextStep)(int32_t taskId, int32_t step);
typedef LongBool (*TQMGetPrivateVariable)(int32_t taskId, const char16_t* var, char16_t* destBuf, int32_t* sizeBuf);
typedef void (*TQMSetPrivateVariable)(int32_t taskId, const char16_t* var, const char16_t* val);
/* Records the step's error for the task: code and a description the host copies. */
typedef void (*TQMSetLastError)(int32_t taskId, uint32_t errorCode, const char16_t* description);
typedef void (*TQMSetRuntimeTag)(int32_t taskId, int32_t stepNum, int32_t tag);
typedef int32_t (*TQMGetRuntimeTag)(int32_t taskId, int32_t stepNum);

/* One action as the plug-in describes it: 48 bytes from QMGetMemory, freed by
   the plug-in at unload (48 bytes). Its texts point into the plug-in's
   catalogue and live as long. */
struct TAFActionInfo {
  const char16_t* Name;               /* shown in the host's action list */
  void* Icon;                         /* HICON, plug-in-owned, or null */
  LongBool AllowNTService;            /* runs in service mode */
  int32_t Indent;                     /* -1, 0 or 1: the indent change around the step */
  int32_t ActionType;                 /* atSimple, atBeginLoop, ... */
  const char16_t* ActionID;           /* upper case, unique in the catalogue */
  const char16_t* ScriptFunctionName; /* empty when the action has none */
};

/* A step's identity (host-owned when the host hands it over). */
struct TQMActionPassport {
  int32_t PluginId;   /* the plug-in the step belongs to */
  int32_t Numaction;  /* its catalogue index; -1 for a host built-in */
  TAFActionInfo info; /* a copy of the action's record; texts as the original */
};

/* Task management, embedded in TAFAppInfo (the plug-in uses the task
   interface instead). */
typedef struct TTaskManage {
  TQMEnumActions EnumActions;
  TQMGetNextStep GetNextStep;
  TQMSetNextStep SetNextStep;
  TQMGetNextStep GetCurrentStep;
  TQMGetPrivateVariable GetPrivateVariable;
  TQMSetPrivateVariable SetPrivateVariable;
} TTaskManage;

/* The host's facilities, handed to InitQMPlugin (host-owned; the plug-in keeps
   a copy of all 304 bytes and uses only the copy). Members the plug-in does
   not use are marked "unused". */
typedef struct TAFAppInfo {
  const char16_t* Ver;                /* host version text, e.g. "9.5.0.1"; checked at load */
  void* WHandle;                      /* host window (HWND), target of the settings queries; may be null */
  LongBool ServiceMode;               /* unused */
  int32_t ServiceModePad;             /* padding of the 8-byte slot */
  TAFInfoOut InfoOut;                 /* the general log, when no task is at hand */
  TAFGetFreeMem QMGetMemory;          /* every block the plug-in hands to the host */
  TAFGetFreeMem QMFreeMemory;         /* gives such a block back, with its size */
  TAFJobsEnum JobsEnum;               /* unused */
  TAFJobRunProc JobRun;               /* unused */
  TAFGetCurrentJobID GetCurrentJobID; /* unused */
  TAFJobStopProc JobStop;             /* unused */
  TAFJobProc JobTriggersOn;           /* unused */
  TAFJobProc JobTriggersOff;          /* unused */
  TAFAddMenuItem AddMenuItem;         /* unused */
  TAFRemoveMenuItem RemoveMenuItem;   /* unused */
  TAFExpandText ExpandText;           /* {variable} expansion of step settings */
  TAFSelectVar SelectVar;             /* variable picker of the configuration dialogs */
  TAFAddVar AddSysVar;                /* unused */
  TAFUserVarProc AddUserVar;          /* unused */
  TAFUserVarProc DelUserVar;          /* unused */
  TAFUserVarProc SetUserVar;          /* sets the host variables an action produces */
  TAFSimpleProc AppMinimize;          /* unused */
  TAFSimpleProc AppRestore;           /* unused */
  TAFSimpleProc AppClose;             /* unused */
  TAFSimpleProc AutomationOn;         /* unused */
  TAFSimpleProc AutomationOff;        /* unused */
  int32_t Reserved1;
  int32_t Reserved2;
  TAFPluinAbout PluginAbout; /* the host's about box */
  TTaskManage TaskManage;    /* unused */
  int32_t Reserved3;
  int32_t Reserved3Pad;
  TQMSetLastError SetLastError;   /* a failed step's error code and text; may be null */
  TAFJobsEnumENV JobsEnumENV;     /* unused */
  TQMSetRuntimeTag SetRuntimeTag; /* unused */
  TQMGetRuntimeTag GetRuntimeTag; /* unused */
} TAFAppInfo;

/* A step's parameter block: host-owned, valid during the call. ConfigAction
   may replace PPtr/Size with a block of its own from QMGetMemory; the host
   then owns that block and frees it, and the plug-in gives back the block it
   had put there before, if any, with its size. */
typedef struct TAFActionParams {
  int32_t Size;      /* bytes at PPtr, terminator included */
  char16_t* PPtr;    /* name=value lines, each ending in CR LF, zero-terminated; may be null */
  uint32_t TaskID;   /* the running task (ExecAction, JobStop) */
  int32_t StepNum;   /* the step's position in the task, from 0 */
  LongBool IsRemote; /* unused */
} TAFActionParams;

/* An event's parameter block, as TAFActionParams (the plug-in has no events). */
typedef struct TAFEventParams {
  int32_t JobID;
  int32_t Size; /* bytes at PPtr, terminator included */
  char16_t* PPtr;
  uint32_t UniqueID;
  LongBool IsRemote;
} TAFEventParams;

typedef struct TAFEventInfo {
  const char16_t* Name;
  void* Icon;
  LongBool AllowNTService;
  const char16_t* EventID;
} TAFEventInfo;

/* Image export (UI thread). *size: in, the room at buffer in bytes; on a
   buffer too small (or null) returns false with the size needed; true with
   size 0 when there is no such image. The buffer is host-owned. */
typedef LongBool (*TGetActionTriggerLogo)(int32_t num, void* buffer, uint32_t* size);
typedef LongBool (*TGetPluginLogo)(void* buffer, uint32_t* size);
typedef void (*TSetDWORD)(uint32_t param);

/* The plug-in's action entry points; index is the catalogue index. */
/* The action's record (plug-in-owned). UI thread. */
typedef TAFActionInfo* (*TAFGetActionInfo)(int32_t index);
/* Opens the action's settings dialog on params (UI thread); true when the
   user confirmed and params hold the new block. */
typedef LongBool (*TAFConfigAction)(int32_t index, TAFActionParams* params);
/* Runs a step (task thread). taskIntf: host-owned IUnknown of the running
   task, valid during the call; the plug-in casts it to IQmTaskBridge. */
typedef LongBool (*TAFExecAction)(int32_t index, void* taskIntf, TAFActionParams* params);
/* The step's one-line description into descr, a host buffer of at least 257
   characters (256 and the terminator). UI thread. */
typedef void (*TAFActionDescr)(int32_t index, TAFActionParams* params, char16_t* descr);
/* The step is removed from its task (UI thread). */
typedef void (*TAFDeleteAction)(int32_t index, TAFActionParams* params);
/* The task ended or was stopped (task thread): once per plug-in step, to free
   what the task kept. taskIntf as for ExecAction. */
typedef void (*TAFJobStopAction)(int32_t index, void* taskIntf, TAFActionParams* params);

/* Plug-in-owned, until unload. */
typedef struct TAFActionsInfo {
  int32_t ActionsCount; /* catalogue size; indexes run 0 .. ActionsCount-1 */
  TAFGetActionInfo GetActionInfo;
  TAFConfigAction ConfigAction;
  TAFExecAction ExecAction;
  TAFActionDescr ActionDescr;
  TAFDeleteAction DeleteAction;
  TAFJobStopAction JobStop;
  TGetActionTriggerLogo GetActionImage;
} TAFActionsInfo;

typedef TAFEventInfo* (*TAFGetEventInfo)(int32_t index);
typedef LongBool (*TAFConfigEvent)(int32_t index, TAFEventParams* params);
typedef void (*TAFStopEvent)(int32_t index, TAFEventParams* params);
typedef void (*TAFEventDescr)(int32_t index, TAFEventParams* params, char16_t* descr);

/* The event entry points (the plug-in has none). */
typedef struct TAFEventsInfo {
  int32_t EventsCount;
  TAFGetEventInfo GetEventInfo;
  TAFConfigEvent ConfigEvent;
  TAFConfigEvent StartEvent;
  TAFStopEvent StopEvent;
  TAFEventDescr EventDescr;
  TAFStopEvent DeleteEvent;
  TAFStopEvent DuplicateEvent;
  TGetActionTriggerLogo GetTriggerImage;
} TAFEventsInfo;

/* What InitQMPlugin returns: plug-in-owned, until unload. Procedures come on
   the UI thread. */
typedef struct TAFPluginInfo {
  int32_t ID;                    /* the plug-in's identifier */
  void* Icon;                    /* HICON, plug-in-owned, or null */
  const char16_t* Descr;         /* the plug-in's description */
  TAFSimpleProc PluginConfig;    /* null unless the plug-in has a settings dialog */
  TAFSimpleProc About;           /* null unless the plug-in has an about box */
  TAFSimpleProc ShutdownPlugin;  /* null unless the plug-in wants a shutdown call */
  LongBool IsActions;            /* -1 with at least one action */
  TAFActionsInfo* ActionsInfo;   /* null without actions */
  LongBool IsEvents;             /* -1 with at least one event */
  TAFEventsInfo* EventsInfo;     /* null without events */
  TSetDWORD SetLocale;           /* the host's locale identifier; always set */
  TGetPluginLogo GetPluginImage; /* null without an image collection */
  TAFSimpleProc ClearImages;     /* null without an image collection */
} TAFPluginInfo;

/* The one exported function (UI thread, once). appInfo: host-owned, valid
   during the call. Returns null when the plug-in declines to load. */
typedef TAFPluginInfo* (*TInitQMPlugin)(TAFAppInfo* appInfo);

/* Host window queries (SendMessage to WHandle, wParam the setting): the
   result is a number, or a pointer to a host-owned text the plug-in copies at
   once; 0x6026 answers a host interface pointer, kept as a weak reference. */
enum { kQmMsgHostSetting = 0x6019, kQmMsgHostBridge = 0x6026 };
enum { kQmSettingNumber = 4, kQmSettingFolder = 7, kQmSettingText = 0, kQmSettingScale = 9 };

/* An interface identifier, laid out as a Windows GUID. */
typedef struct QmGuid {
  uint32_t Data1;
  uint16_t Data2;
  uint16_t Data3;
  uint8_t Data4[8];
} QmGuid;

#if defined(__GNUC__)
#define QM_UNUSED __attribute__((unused))
#else
#define QM_UNUSED
#endif

/* IUnknown {00000000-0000-0000-C000-000000000046}: every interface answers it. */
static const QmGuid kQmIidUnknown QM_UNUSED = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
/* IQmTaskBridge {5C1D7A20-3E84-4B9F-A6D2-71F0C8E3B945}: the running task. */
static const QmGuid kQmIidTaskBridge QM_UNUSED = {
    0x5C1D7A20, 0x3E84, 0x4B9F, {0xA6, 0xD2, 0x71, 0xF0, 0xC8, 0xE3, 0xB9, 0x45}};

/* QueryInterface results. */
enum { kQmOk = 0 };
#define QM_E_NOINTERFACE ((int32_t)0x80004002u)

/*
 * COM-style interfaces. An interface pointer points at an object whose first
 * word is its method table; every method takes the interface pointer first.
 * Reserved slots are methods the plug-in never calls; a host fills them with
 * something that fails loudly. All calls come on the thread that is running
 * the task (the one ExecAction or JobStop was called on).
 */
typedef struct IQmTaskItem IQmTaskItem;
typedef struct IQmTaskBridge IQmTaskBridge;

/* One step of the task, as method 15 of the task interface hands it out. */
typedef struct IQmTaskItemVtbl {
  /* Answers no interface: *out null, QM_E_NOINTERFACE. */
  int32_t (*QueryInterface)(IQmTaskItem* self, const QmGuid* iid, void** out);
  uint32_t (*AddRef)(IQmTaskItem* self);
  /* The new reference count; at 0 the host frees the item. */
  uint32_t (*Release)(IQmTaskItem* self);
  /* The step's parameter block: host-owned, valid while the item lives. */
  const char16_t* (*Params)(IQmTaskItem* self);
  void* Reserved4[6];
  /* Fills *passport (plug-in-owned record; its texts are host-owned and valid
     while the item lives). A host built-in step has Numaction -1. */
  void (*Passport)(IQmTaskItem* self, TQMActionPassport* passport);
} IQmTaskItemVtbl;

struct IQmTaskItem {
  const IQmTaskItemVtbl* lpVtbl;
};

/* The running task (IQmTaskBridge). The ExecAction and JobStop argument
   answers it through QueryInterface; a reference obtained that way the
   plug-in releases, or keeps past the call for as long as it needs the task
   (a loop keeps one until it ends). */
typedef struct IQmTaskBridgeVtbl {
  /* iid: caller-owned. On success *out holds a new reference and 0 is
     returned; otherwise *out is null and the result QM_E_NOINTERFACE. */
  int32_t (*QueryInterface)(IQmTaskBridge* self, const QmGuid* iid, void** out);
  uint32_t (*AddRef)(IQmTaskBridge* self);
  uint32_t (*Release)(IQmTaskBridge* self);
  void* Reserved3[4];
  /* The task's identifier, the same as TAFActionParams.TaskID. */
  int32_t (*TaskId)(IQmTaskBridge* self);
  void* Reserved8[6];
  /* Number of steps in the task; steps count from 0. */
  int32_t (*StepCount)(IQmTaskBridge* self);
  /* *out: a new reference to step `index` that the plug-in releases, or null
     for an index outside the task. */
  void (*GetStep)(IQmTaskBridge* self, IQmTaskItem** out, int32_t index);
  void* Reserved16[3];
  /* The step the host runs after the current one returns. */
  void (*SetNextStep)(IQmTaskBridge* self, int32_t step);
  /* A task-private variable. name: caller-owned, zero-terminated. *value: a
     block from the host allocator (the one behind QMGetMemory) holding the
     zero-terminated value, or null when the variable is absent; the plug-in
     copies it and frees it with QMFreeMemory(&block, (length + 1) * 2), the
     length in characters without the terminator. */
  void (*GetPrivateVariable)(IQmTaskBridge* self, char16_t** value, const char16_t* name);
  /* Sets a task-private variable; both texts caller-owned, copied by the host. */
  void (*SetPrivateVariable)(IQmTaskBridge* self, const char16_t* name, const char16_t* value);
  void* Reserved22[1];
  /* One line of the task's log at level infoType (itInfo ...); text
     caller-owned, valid during the call. */
  void (*Log)(IQmTaskBridge* self, uint8_t infoType, const char16_t* text);
} IQmTaskBridgeVtbl;

struct IQmTaskBridge {
  const IQmTaskBridgeVtbl* lpVtbl;
};

#ifdef __cplusplus
}  // extern "C"

#define QM_CHECK_OFFSET(type, field, offset) static_assert(offsetof(type, field) == (offset), #type "." #field)
#else
#define QM_CHECK_OFFSET(type, field, offset) _Static_assert(offsetof(type, field) == (offset), #type "." #field)
#define static_assert _Static_assert
#endif

static_assert(sizeof(void*) == 8, "the host boundary is 64-bit");

QM_CHECK_OFFSET(TAFAppInfo, Ver, 0x000);
QM_CHECK_OFFSET(TAFAppInfo, WHandle, 0x008);
QM_CHECK_OFFSET(TAFAppInfo, ServiceMode, 0x010);
QM_CHECK_OFFSET(TAFAppInfo, InfoOut, 0x018);
QM_CHECK_OFFSET(TAFAppInfo, QMGetMemory, 0x020);
QM_CHECK_OFFSET(TAFAppInfo, QMFreeMemory, 0x028);
QM_CHECK_OFFSET(TAFAppInfo, JobsEnum, 0x030);
QM_CHECK_OFFSET(TAFAppInfo, JobRun, 0x038);
QM_CHECK_OFFSET(TAFAppInfo, GetCurrentJobID, 0x040);
QM_CHECK_OFFSET(TAFAppInfo, JobStop, 0x048);
QM_CHECK_OFFSET(TAFAppInfo, JobTriggersOn, 0x050);
QM_CHECK_OFFSET(TAFAppInfo, JobTriggersOff, 0x058);
QM_CHECK_OFFSET(TAFAppInfo, AddMenuItem, 0x060);
QM_CHECK_OFFSET(TAFAppInfo, RemoveMenuItem, 0x068);
QM_CHECK_OFFSET(TAFAppInfo, ExpandText, 0x070);
QM_CHECK_OFFSET(TAFAppInfo, SelectVar, 0x078);
QM_CHECK_OFFSET(TAFAppInfo, AddSysVar, 0x080);
QM_CHECK_OFFSET(TAFAppInfo, AddUserVar, 0x088);
QM_CHECK_OFFSET(TAFAppInfo, DelUserVar, 0x090);
QM_CHECK_OFFSET(TAFAppInfo, SetUserVar, 0x098);
QM_CHECK_OFFSET(TAFAppInfo, AppMinimize, 0x0A0);
QM_CHECK_OFFSET(TAFAppInfo, AppRestore, 0x0A8);
QM_CHECK_OFFSET(TAFAppInfo, AppClose, 0x0B0);
QM_CHECK_OFFSET(TAFAppInfo, AutomationOn, 0x0B8);
QM_CHECK_OFFSET(TAFAppInfo, AutomationOff, 0x0C0);
QM_CHECK_OFFSET(TAFAppInfo, Reserved1, 0x0C8);
QM_CHECK_OFFSET(TAFAppInfo, Reserved2, 0x0CC);
QM_CHECK_OFFSET(TAFAppInfo, PluginAbout, 0x0D0);
QM_CHECK_OFFSET(TAFAppInfo, TaskManage, 0x0D8);
QM_CHECK_OFFSET(TAFAppInfo, Reserved3, 0x108);
QM_CHECK_OFFSET(TAFAppInfo, SetLastError, 0x110);
QM_CHECK_OFFSET(TAFAppInfo, JobsEnumENV, 0x118);
QM_CHECK_OFFSET(TAFAppInfo, SetRuntimeTag, 0x120);
QM_CHECK_OFFSET(TAFAppInfo, GetRuntimeTag, 0x128);
static_assert(sizeof(TAFAppInfo) == 304, "TAFAppInfo size");

QM_CHECK_OFFSET(TTaskManage, EnumActions, 0x00);
QM_CHECK_OFFSET(TTaskManage, GetNextStep, 0x08);
QM_CHECK_OFFSET(TTaskManage, SetNextStep, 0x10);
QM_CHECK_OFFSET(TTaskManage, GetCurrentStep, 0x18);
QM_CHECK_OFFSET(TTaskManage, GetPrivateVariable, 0x20);
QM_CHECK_OFFSET(TTaskManage, SetPrivateVariable, 0x28);
static_assert(sizeof(TTaskManage) == 48, "TTaskManage size");

QM_CHECK_OFFSET(TAFPluginInfo, ID, 0x00);
QM_CHECK_OFFSET(TAFPluginInfo, Icon, 0x08);
QM_CHECK_OFFSET(TAFPluginInfo, Descr, 0x10);
QM_CHECK_OFFSET(TAFPluginInfo, PluginConfig, 0x18);
QM_CHECK_OFFSET(TAFPluginInfo, About, 0x20);
QM_CHECK_OFFSET(TAFPluginInfo, ShutdownPlugin, 0x28);
QM_CHECK_OFFSET(TAFPluginInfo, IsActions, 0x30);
QM_CHECK_OFFSET(TAFPluginInfo, ActionsInfo, 0x38);
QM_CHECK_OFFSET(TAFPluginInfo, IsEvents, 0x40);
QM_CHECK_OFFSET(TAFPluginInfo, EventsInfo, 0x48);
QM_CHECK_OFFSET(TAFPluginInfo, SetLocale, 0x50);
QM_CHECK_OFFSET(TAFPluginInfo, GetPluginImage, 0x58);
QM_CHECK_OFFSET(TAFPluginInfo, ClearImages, 0x60);
static_assert(sizeof(TAFPluginInfo) == 104, "TAFPluginInfo size");

QM_CHECK_OFFSET(TAFActionsInfo, ActionsCount, 0x00);
QM_CHECK_OFFSET(TAFActionsInfo, GetActionInfo, 0x08);
QM_CHECK_OFFSET(TAFActionsInfo, ConfigAction, 0x10);
QM_CHECK_OFFSET(TAFActionsInfo, ExecAction, 0x18);
QM_CHECK_OFFSET(TAFActionsInfo, ActionDescr, 0x20);
QM_CHECK_OFFSET(TAFActionsInfo, DeleteAction, 0x28);
QM_CHECK_OFFSET(TAFActionsInfo, JobStop, 0x30);
QM_CHECK_OFFSET(TAFActionsInfo, GetActionImage, 0x38);
static_assert(sizeof(TAFActionsInfo) == 64, "TAFActionsInfo size");

QM_CHECK_OFFSET(TAFActionInfo, Name, 0x00);
QM_CHECK_OFFSET(TAFActionInfo, Icon, 0x08);
QM_CHECK_OFFSET(TAFActionInfo, AllowNTService, 0x10);
QM_CHECK_OFFSET(TAFActionInfo, Indent, 0x14);
QM_CHECK_OFFSET(TAFActionInfo, ActionType, 0x18);
QM_CHECK_OFFSET(TAFActionInfo, ActionID, 0x20);
QM_CHECK_OFFSET(TAFActionInfo, ScriptFunctionName, 0x28);
static_assert(sizeof(TAFActionInfo) == 48, "TAFActionInfo size");

QM_CHECK_OFFSET(TAFActionParams, Size, 0x00);
QM_CHECK_OFFSET(TAFActionParams, PPtr, 0x08);
QM_CHECK_OFFSET(TAFActionParams, TaskID, 0x10);
QM_CHECK_OFFSET(TAFActionParams, StepNum, 0x14);
QM_CHECK_OFFSET(TAFActionParams, IsRemote, 0x18);
static_assert(sizeof(TAFActionParams) == 32, "TAFActionParams size");

QM_CHECK_OFFSET(TAFEventsInfo, EventsCount, 0x00);
QM_CHECK_OFFSET(TAFEventsInfo, GetEventInfo, 0x08);
QM_CHECK_OFFSET(TAFEventsInfo, ConfigEvent, 0x10);
QM_CHECK_OFFSET(TAFEventsInfo, StartEvent, 0x18);
QM_CHECK_OFFSET(TAFEventsInfo, StopEvent, 0x20);
QM_CHECK_OFFSET(TAFEventsInfo, EventDescr, 0x28);
QM_CHECK_OFFSET(TAFEventsInfo, DeleteEvent, 0x30);
QM_CHECK_OFFSET(TAFEventsInfo, DuplicateEvent, 0x38);
QM_CHECK_OFFSET(TAFEventsInfo, GetTriggerImage, 0x40);
static_assert(sizeof(TAFEventsInfo) == 72, "TAFEventsInfo size");

QM_CHECK_OFFSET(TAFEventInfo, Name, 0x00);
QM_CHECK_OFFSET(TAFEventInfo, Icon, 0x08);
QM_CHECK_OFFSET(TAFEventInfo, AllowNTService, 0x10);
QM_CHECK_OFFSET(TAFEventInfo, EventID, 0x18);
static_assert(sizeof(TAFEventInfo) == 32, "TAFEventInfo size");

QM_CHECK_OFFSET(TAFEventParams, JobID, 0x00);
QM_CHECK_OFFSET(TAFEventParams, Size, 0x04);
QM_CHECK_OFFSET(TAFEventParams, PPtr, 0x08);
QM_CHECK_OFFSET(TAFEventParams, UniqueID, 0x10);
QM_CHECK_OFFSET(TAFEventParams, IsRemote, 0x14);

QM_CHECK_OFFSET(IQmTaskItemVtbl, QueryInterface, 0 * 8);
QM_CHECK_OFFSET(IQmTaskItemVtbl, AddRef, 1 * 8);
QM_CHECK_OFFSET(IQmTaskItemVtbl, Release, 2 * 8);
QM_CHECK_OFFSET(IQmTaskItemVtbl, Params, 3 * 8);
QM_CHECK_OFFSET(IQmTaskItemVtbl, Passport, 10 * 8);
static_assert(sizeof(IQmTaskItemVtbl) == 11 * 8, "IQmTaskItemVtbl size");

QM_CHECK_OFFSET(IQmTaskBridgeVtbl, QueryInterface, 0 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, AddRef, 1 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, Release, 2 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, TaskId, 7 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, StepCount, 14 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, GetStep, 15 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, SetNextStep, 19 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, GetPrivateVariable, 20 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, SetPrivateVariable, 21 * 8);
QM_CHECK_OFFSET(IQmTaskBridgeVtbl, Log, 23 * 8);
static_assert(sizeof(IQmTaskBridgeVtbl) == 24 * 8, "IQmTaskBridgeVtbl size");

QM_CHECK_OFFSET(TQMActionPassport, PluginId, 0);
QM_CHECK_OFFSET(TQMActionPassport, Numaction, 4);
QM_CHECK_OFFSET(TQMActionPassport, info, 8);

#endif /* QMCSV_HOST_ABI_H */
