// The identifiers of the published libraries, classes and interfaces, for the interface definitions in this folder.
//
// They are fixed for ever: compiled clients and the registry of every installation hold them. Never change one, and
// never give one to something else. New ones are random (for example from uuidgen).
#pragma once

// V5Strings: the type library and its classes
#define LIBID_V5STRINGS           b6b7ccd4-75b3-4c21-ad67-7b97efb0f7db
#define CLSID_NIMBOSTRINGSMAIN    1fe14cb8-ee1d-48d8-bfda-9476da3ed9f9
#define CLSID_LOGFILECLASS        78ce45bd-6f9c-48ec-9f0e-dc5cdbd80dab
#define CLSID_NIMBOERRORNUMBERS   ef37909b-0db1-40ea-a973-21e1ee5b9996
#define CLSID_DAHSINIMAIN         bcfa5935-a095-4967-8d61-7b06bfbd698c
#define CLSID_DAHSINIENTRIES      87306195-c5d2-48c7-9c4a-51f463c6591d
#define CLSID_DAHSINIENTRY        1fe01a4d-c7b8-41b3-8176-d6a8d88294a3
#define CLSID_NIMBOSECURITY       cbacf57c-83d7-4cb4-b992-1021ad5c5090
#define CLSID_NIMBOHELP           58ecf168-04ce-4d5c-9ade-5cba1aa7b267
#define CLSID_FOOTNOTELIST        d8d40fb6-a60c-4ce8-b5f3-d55a6aced141
#define CLSID_FOOTNOTE            65691bcd-cac6-4947-b504-6ebd7116e13b

// V5Strings: the default interface of each class, and the events
#define IID_NIMBOSTRINGSMAIN      0d2dfc80-6b1b-4fd8-a2a0-526b9dbe4e2b
#define IID_LOGFILECLASS          5e92be71-05ab-47ad-be75-66022b5f7bf8
#define IID_NIMBOERRORNUMBERS     0533c17d-5a5c-4b00-a19f-5c5c2d740fbf
#define IID_DAHSINIMAIN           63cfc16d-6646-487a-b2fa-7ea6b68e66fc
#define IID_DAHSINIENTRIES        4565fce8-2ae2-4174-88fd-5d3e20d77b70
#define IID_DAHSINIENTRY          4c60a118-e85d-44d3-9618-da967d211071
#define IID_NIMBOSECURITY         2ade6109-6c28-45b6-81cd-f0f3e0c255dc
#define IID_NIMBOHELP             6e22b25a-d837-4a10-a6ad-3dce6587102f
#define IID_FOOTNOTELIST          503291f9-3a2e-47d6-b105-4fb78d6788bf
#define IID_FOOTNOTE              cce9cd8f-463f-478c-8ead-c91c5451465c
#define DIID_NIMBOSECURITY_EVENTS d1c9aaf2-9338-4257-8cf8-fc176a97ce8e

// V5Msgs: the message sink that clients pass in
#define IID_IRAISEMSG             7f97c271-78c0-4fde-938b-4d736d6bb80a
